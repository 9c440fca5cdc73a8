#ifndef ORMELLE_SOANNOTEXT3_H
#define ORMELLE_SOANNOTEXT3_H

#include <cstddef>

#include <Inventor/nodes/SoText3.h>

#include <Ormelle/PoSubNode.h>

/// Flat text for annotation, which the toolkit lacks: lies in the scene with the size and direction of `SoText3`, so
/// that it is measured without a camera, and stays legible.
///
/// It is drawn in its plain colour whatever the lights, a little in front of a surface that it lies on, and from behind
/// it is turned about its upright middle axis, so that it never reads mirrored. Only the front part exists.
class SoAnnoText3 : public SoText3 {
  PO_NODE_HEADER(SoAnnoText3, SoText3);

 public:
  SoAnnoText3();

  static void* operator new(std::size_t size);
  static void operator delete(void* memory);

  void GLRender(SoGLRenderAction* action) override;

 protected:
  ~SoAnnoText3() override = default;
};

#endif
