#ifndef ORMELLE_PIPICTUREACTION_H
#define ORMELLE_PIPICTUREACTION_H

#include <Inventor/SbMatrix.h>
#include <Inventor/SbVec2f.h>
#include <Inventor/actions/SoGLRenderAction.h>
#include <Inventor/elements/SoGLLinePatternElement.h>
#include <Inventor/elements/SoGLLineWidthElement.h>
#include <Inventor/elements/SoGLPointSizeElement.h>
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

/// By what the elements below multiply the widths of lines, the sizes of points and the lengths of line patterns.
class PiPixelScale {
 public:
  /// From now on.
  static void set(float factor) { s_factor = factor; }
  static float get() { return s_factor; }
  /// A size of the scene, in which 0 stands for 1, multiplied.
  static float scaled(float size) { return (size > 0.0f ? size : 1.0f) * s_factor; }

 private:
  static float s_factor;
};

class PiScaledLineWidthElement : public SoGLLineWidthElement {
  SO_ELEMENT_HEADER(PiScaledLineWidthElement);

 public:
  static void initClass();
  void init(SoState* state) override;

 protected:
  ~PiScaledLineWidthElement() override;
  void setElt(float width) override;
};

class PiScaledPointSizeElement : public SoGLPointSizeElement {
  SO_ELEMENT_HEADER(PiScaledPointSizeElement);

 public:
  static void initClass();
  void init(SoState* state) override;

 protected:
  ~PiScaledPointSizeElement() override;
  void setElt(float size) override;
};

class PiScaledLinePatternElement : public SoGLLinePatternElement {
  SO_ELEMENT_HEADER(PiScaledLinePatternElement);

 public:
  static void initClass();

 protected:
  ~PiScaledLinePatternElement() override;
  void setElt(int32_t pattern) override;
};

/// The render action of pictures: SoGLRenderAction with a projection that can be shifted between passes, and with sizes
/// in pixels that can be enlarged.
class PiPictureAction : public SoGLRenderAction {
  SO_ACTION_HEADER(PiPictureAction);

 public:
  /// Registers the action and its element with the toolkit, once per start of the toolkit.
  static void initClass();

  explicit PiPictureAction(const SbViewportRegion& viewport);
  ~PiPictureAction() override;
};

#endif
