#ifndef ORMELLE_PIPICTUREACTION_H
#define ORMELLE_PIPICTUREACTION_H

#include <Inventor/SbVec2f.h>
#include <Inventor/actions/SoGLRenderAction.h>
#include <Inventor/elements/SoGLProjectionMatrixElement.h>

/// Shifts everything that is projected by a fraction of a pixel, in OpenGL only: what places itself in whole pixels by
/// the matrices of the state (bitmap text, markers) stays where it is and so stays sharp.
class PiShiftedProjectionElement : public SoGLProjectionMatrixElement {
  SO_ELEMENT_HEADER(PiShiftedProjectionElement);

 public:
  static void initClass();
  /// The shift in normalised device coordinates, for all that is drawn from now on.
  static void setShift(const SbVec2f& shift) { s_shift = shift; }

  void pop(SoState* state, const SoElement* prevTopElement) override;

 protected:
  ~PiShiftedProjectionElement() override;
  void setElt(const SbMatrix& matrix) override;

 private:
  void load() const;

  static SbVec2f s_shift;
};

/// The render action of pictures: SoGLRenderAction with a projection that can be shifted between passes.
class PiPictureAction : public SoGLRenderAction {
  SO_ACTION_HEADER(PiPictureAction);

 public:
  /// Registers the action and its element with the toolkit, once per start of the toolkit.
  static void initClass();

  explicit PiPictureAction(const SbViewportRegion& viewport);
  ~PiPictureAction() override;
};

#endif
