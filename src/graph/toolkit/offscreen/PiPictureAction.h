#ifndef ORMELLE_PIPICTUREACTION_H
#define ORMELLE_PIPICTUREACTION_H

#include <Inventor/SbMatrix.h>
#include <Inventor/SbVec2f.h>
#include <Inventor/actions/SoGLRenderAction.h>
#include <Inventor/elements/SoGLProjectionMatrixElement.h>

/// Changes the projection of every camera. A shift by a fraction of a pixel acts in OpenGL only: what places itself in
/// whole pixels by the matrices of the state (bitmap text, markers) stays where it is and so stays sharp. A tile, one
/// of equal parts of the picture that fills the viewport instead of the whole, acts on these too.
class PiShiftedProjectionElement : public SoGLProjectionMatrixElement {
  SO_ELEMENT_HEADER(PiShiftedProjectionElement);

 public:
  static void initClass();
  /// The shift in normalised device coordinates, for all that is drawn from now on.
  static void setShift(const SbVec2f& shift) { s_shift = shift; }
  /// Shows tile (column, row), from the lower left, of `count` by `count`.
  static void setTile(int column, int row, int count);

  void pop(SoState* state, const SoElement* prevTopElement) override;

 protected:
  ~PiShiftedProjectionElement() override;
  void setElt(const SbMatrix& matrix) override;

 private:
  void load() const;

  static SbVec2f s_shift;
  static SbMatrix s_tile;
};

/// The render action of pictures: SoGLRenderAction with a projection that can be shifted between passes, and with sizes
/// in pixels that can be enlarged.
class PiPictureAction : public SoGLRenderAction {
  SO_ACTION_HEADER(PiPictureAction);

 public:
  /// Registers the action and its element with the toolkit, once per start of the toolkit.
  static void initClass();

  /// By what widths of lines, sizes of points, line patterns and sizes of bitmap text are multiplied from now on.
  static void setSizeFactor(float factor) { s_sizeFactor = factor; }

  explicit PiPictureAction(const SbViewportRegion& viewport);
  ~PiPictureAction() override;

 private:
  static void drawShape(SoAction* action, SoNode* node);

  static float s_sizeFactor;
};

#endif
