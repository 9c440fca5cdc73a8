#ifndef ORMELLE_PIVECTORKIT_H
#define ORMELLE_PIVECTORKIT_H

#include <initializer_list>

#include <Inventor/nodekits/SoAppearanceKit.h>
#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Inventor/nodes/SoShapeHints.h>
#include <Ormelle/PbMesh.h>
#include <Ormelle/PoBase.h>

#include "quillane/vector/PiVectorRep.h"

/// The parts and fields of a kit of vectors, for its constructor.
#define PI_VECTOR_KIT_PARTS()                                              \
  PO_KIT_ADD_CATALOG_ENTRY(bodySep, SoSeparator, alternateRep);            \
  PO_KIT_ADD_CATALOG_ENTRY(bodyApp, SoAppearanceKit, bodySep);             \
  PO_KIT_ADD_CATALOG_ENTRY(bodyGroup, SoGroup, bodySep);                   \
  PO_KIT_ADD_CATALOG_ENTRY(startArrowSep, SoSeparator, alternateRep);      \
  PO_KIT_ADD_CATALOG_ENTRY(startArrowApp, SoAppearanceKit, startArrowSep); \
  PO_KIT_ADD_CATALOG_ENTRY(startArrowGroup, SoGroup, startArrowSep);       \
  PO_KIT_ADD_CATALOG_ENTRY(endArrowSep, SoSeparator, alternateRep);        \
  PO_KIT_ADD_CATALOG_ENTRY(endArrowApp, SoAppearanceKit, endArrowSep);     \
  PO_KIT_ADD_CATALOG_ENTRY(endArrowGroup, SoGroup, endArrowSep)

#define PI_VECTOR_KIT_ENUM(Enum, ...)                                                                          \
  do {                                                                                                         \
    if (!firstInstance) break;                                                                                 \
    for (const PiVectorKit::Name& name : {__VA_ARGS__}) fieldData->addEnumValue(#Enum, name.text, name.value); \
  } while (0)

#define PI_VECTOR_KIT_NAME(value) \
  PiVectorKit::Name { #value, PoVectorGlyphs::value }

#define PI_VECTOR_KIT_ARROW_NAMES                                                                                     \
  PI_VECTOR_KIT_NAME(NO_SHAPE), PI_VECTOR_KIT_NAME(POINT), PI_VECTOR_KIT_NAME(CHEVRON), PI_VECTOR_KIT_NAME(TRIANGLE), \
      PI_VECTOR_KIT_NAME(RECTANGLE), PI_VECTOR_KIT_NAME(CONE), PI_VECTOR_KIT_NAME(SPHERE),                            \
      PI_VECTOR_KIT_NAME(INDIRECT_CHEVRON), PI_VECTOR_KIT_NAME(INDIRECT_TRIANGLE), PI_VECTOR_KIT_NAME(INDIRECT_CONE)

#define PI_VECTOR_KIT_COLOR_NAMES \
  PI_VECTOR_KIT_NAME(CONSTANT_COLOR), PI_VECTOR_KIT_NAME(MODULE_MAPPING_COLOR), PI_VECTOR_KIT_NAME(SCALAR_MAPPING_COLOR)

#define PI_VECTOR_KIT_FIELDS()                                                                                        \
  PI_VECTOR_KIT_ENUM(EliminationStatus, PI_VECTOR_KIT_NAME(NONE), PI_VECTOR_KIT_NAME(TOO_SMALL),                      \
                     PI_VECTOR_KIT_NAME(TOO_LONG), PI_VECTOR_KIT_NAME(TOO_SMALL_OR_LONG));                            \
  PI_VECTOR_KIT_ENUM(BodyShape, PI_VECTOR_KIT_NAME(NO_BODY), PI_VECTOR_KIT_NAME(LINE), PI_VECTOR_KIT_NAME(CYLINDER)); \
  PI_VECTOR_KIT_ENUM(BodyLengthType, PI_VECTOR_KIT_NAME(CONSTANT_LENGTH), PI_VECTOR_KIT_NAME(RELATIVE_LENGTH));       \
  PI_VECTOR_KIT_ENUM(BodyRadiusType, PI_VECTOR_KIT_NAME(CONSTANT_RADIUS), PI_VECTOR_KIT_NAME(RELATIVE_RADIUS));       \
  PI_VECTOR_KIT_ENUM(BodyColoringType, PI_VECTOR_KIT_COLOR_NAMES);                                                    \
  PI_VECTOR_KIT_ENUM(StartArrowShape, PI_VECTOR_KIT_ARROW_NAMES);                                                     \
  PI_VECTOR_KIT_ENUM(EndArrowShape, PI_VECTOR_KIT_ARROW_NAMES);                                                       \
  PI_VECTOR_KIT_ENUM(StartArrowHeightType, PI_VECTOR_KIT_NAME(CONSTANT_HEIGHT), PI_VECTOR_KIT_NAME(RELATIVE_HEIGHT)); \
  PI_VECTOR_KIT_ENUM(EndArrowHeightType, PI_VECTOR_KIT_NAME(CONSTANT_HEIGHT), PI_VECTOR_KIT_NAME(RELATIVE_HEIGHT));   \
  PI_VECTOR_KIT_ENUM(StartArrowColoringType, PI_VECTOR_KIT_COLOR_NAMES);                                              \
  PI_VECTOR_KIT_ENUM(EndArrowColoringType, PI_VECTOR_KIT_COLOR_NAMES);                                                \
  PO_KIT_ADD_FIELD(density, (1));                                                                                     \
  PO_KIT_ADD_FIELD(eliminationStatus, (NONE));                                                                        \
  PO_KIT_ADD_FIELD(minLength, (0));                                                                                   \
  PO_KIT_ADD_FIELD(maxLength, (0));                                                                                   \
  PO_KIT_ADD_FIELD(bodyShape, (LINE));                                                                                \
  PO_KIT_ADD_FIELD(bodyLengthType, (RELATIVE_LENGTH));                                                                \
  PO_KIT_ADD_FIELD(bodyLengthFactor, (1));                                                                            \
  PO_KIT_ADD_FIELD(bodyRadiusType, (RELATIVE_RADIUS));                                                                \
  PO_KIT_ADD_FIELD(bodyRadiusFactor, (0.04f));                                                                        \
  PO_KIT_ADD_FIELD(bodyColoringType, (CONSTANT_COLOR));                                                               \
  PO_KIT_ADD_FIELD(startArrowShape, (NO_SHAPE));                                                                      \
  PO_KIT_ADD_FIELD(endArrowShape, (CHEVRON));                                                                         \
  PO_KIT_ADD_FIELD(startArrowHeightType, (RELATIVE_HEIGHT));                                                          \
  PO_KIT_ADD_FIELD(endArrowHeightType, (RELATIVE_HEIGHT));                                                            \
  PO_KIT_ADD_FIELD(startArrowHeightFactor, (0.3f));                                                                   \
  PO_KIT_ADD_FIELD(startArrowRadiusFactor, (0.4f));                                                                   \
  PO_KIT_ADD_FIELD(endArrowHeightFactor, (0.3f));                                                                     \
  PO_KIT_ADD_FIELD(endArrowRadiusFactor, (0.4f));                                                                     \
  PO_KIT_ADD_FIELD(startArrowColoringType, (CONSTANT_COLOR));                                                         \
  PO_KIT_ADD_FIELD(endArrowColoringType, (CONSTANT_COLOR));                                                           \
  PO_KIT_SET_ENUM_TYPE(eliminationStatus, EliminationStatus);                                                         \
  PO_KIT_SET_ENUM_TYPE(bodyShape, BodyShape);                                                                         \
  PO_KIT_SET_ENUM_TYPE(bodyLengthType, BodyLengthType);                                                               \
  PO_KIT_SET_ENUM_TYPE(bodyRadiusType, BodyRadiusType);                                                               \
  PO_KIT_SET_ENUM_TYPE(bodyColoringType, BodyColoringType);                                                           \
  PO_KIT_SET_ENUM_TYPE(startArrowShape, StartArrowShape);                                                             \
  PO_KIT_SET_ENUM_TYPE(endArrowShape, EndArrowShape);                                                                 \
  PO_KIT_SET_ENUM_TYPE(startArrowHeightType, StartArrowHeightType);                                                   \
  PO_KIT_SET_ENUM_TYPE(endArrowHeightType, EndArrowHeightType);                                                       \
  PO_KIT_SET_ENUM_TYPE(startArrowColoringType, StartArrowColoringType);                                               \
  PO_KIT_SET_ENUM_TYPE(endArrowColoringType, EndArrowColoringType)

#define PI_VECTOR_KIT_WATCH()                                                                                     \
  for (SoField * field : std::initializer_list<SoField*>{&density,                                                \
                                                         &eliminationStatus,                                      \
                                                         &minLength,                                              \
                                                         &maxLength,                                              \
                                                         &bodyShape,                                              \
                                                         &bodyLengthType,                                         \
                                                         &bodyLengthFactor,                                       \
                                                         &bodyRadiusType,                                         \
                                                         &bodyRadiusFactor,                                       \
                                                         &bodyColoringType,                                       \
                                                         &startArrowShape,                                        \
                                                         &endArrowShape,                                          \
                                                         &startArrowHeightType,                                   \
                                                         &endArrowHeightType,                                     \
                                                         &startArrowHeightFactor,                                 \
                                                         &startArrowRadiusFactor,                                 \
                                                         &endArrowHeightFactor,                                   \
                                                         &endArrowRadiusFactor,                                   \
                                                         &startArrowColoringType,                                 \
                                                         &endArrowColoringType})                                  \
    watchField(*field);                                                                                           \
  for (SoSFNode * part : std::initializer_list<SoSFNode*>{&bodySep, &bodyGroup, &startArrowSep, &startArrowGroup, \
                                                          &endArrowSep, &endArrowGroup})                          \
  ownPart(*part)

/// What the kits of vectors do alike.
class PiVectorKit {
 public:
  struct Name {
    const char* text;
    int value;
  };

  /// How many vectors the set has: one a node or one a cell.
  static int numVectors(const PbMesh& mesh, int vecsIndex);

  /// The scalar set for colours, if it is bound as the vectors are; else null.
  static const float* scalarsOf(const PbMesh& mesh, int vecsIndex, int valuesIndex);

  /// Sets the three groups of a kit: empty, or with the glyphs of what `addAll` adds to `rep`.
  template <class AddAll>
  static void build(PoBase& kit, PiVectorRep& rep, const PoVectorGlyphs& glyphs, bool isDrawn, float spacing,
                    int numVectors, const SbVec3f* vectors, const PbDataMapping* mapping, const float* scalars,
                    AddAll addAll) {
    SoGroup* groups[3];
    for (SoGroup*& group : groups) {
      group = new SoGroup;
      auto* hints = new SoShapeHints;
      group->addChild(hints);
      hints->vertexOrdering = SoShapeHints::CLOCKWISE;
    }
    if (isDrawn) {
      rep.start(glyphs, spacing, numVectors, vectors);
      addAll();
      rep.buildBodies(mapping, scalars, groups[0]);
      rep.buildArrows(false, mapping, scalars, groups[1]);
      rep.buildArrows(true, mapping, scalars, groups[2]);
    }
    kit.setPart("bodyGroup", groups[0]);
    kit.setPart("startArrowGroup", groups[1]);
    kit.setPart("endArrowGroup", groups[2]);
  }
};

#endif
