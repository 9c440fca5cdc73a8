#ifndef ORMELLE_POCHART_H
#define ORMELLE_POCHART_H

#include <memory>

#include <Inventor/SbVec3f.h>
#include <Inventor/fields/SoSFEnum.h>
#include <Inventor/fields/SoSFInt32.h>
#include <Inventor/fields/SoSFNode.h>

#include <Ormelle/PoTavernel.h>

class PbMesh1D;

/// Root of the kits that draw a one-dimensional mesh: it says which sets of values give y and colours, and how the
/// colours are applied.
///
/// Mesh, data mapping, filter and hints come from the traversal state; see PbMesh1D for the geometry.
class ORMELLE_API PoChart : public PoTavernel {
  PO_KIT_ABSTRACT_HEADER(PoChart, PoTavernel);

 public:
  enum ColorBinding {
    INHERITED = 0,  ///< the material of the traversal state
    PER_PART = 2,   ///< one colour from each node to the next, that of the former
    PER_VERTEX = 1  ///< a colour at each node, mixed in between
  };
  /// Where the colours of `PER_PART` and `PER_VERTEX` come from.
  enum ColorSource {
    COLOR_MAPPING_SOURCE = 0,   ///< the data mapping on the state; `material` if there is none or no set of values
    COLOR_MATERIAL_SOURCE = 1,  ///< `material`
    COLOR_NONE_SOURCE = 2       ///< nowhere: colours are inherited
  };

  /// A ColorBinding, `INHERITED` by default.
  SoSFEnum colorBinding;
  /// An SoMaterial whose lists are used over and over along the nodes; anything else counts as none. Null by default.
  SoSFNode material;
  /// Index of the set of values that the data mapping colours by; 0 by default.
  SoSFInt32 colorValuesIndex;
  /// Index of the set of values that gives y; 0 by default.
  SoSFInt32 yValuesIndex;
  /// A ColorSource, `COLOR_MAPPING_SOURCE` by default.
  SoSFEnum colorSource;

  /// The fields, with `INHERITED` and `COLOR_MATERIAL_SOURCE` for values that are none of the enumeration.
  /// @{
  ColorBinding getColorBinding() const;
  ColorSource getColorSource() const;
  /// @}

  void basicObjectChange(PbBase* object) override;

 protected:
  PoChart();
  ~PoChart() override;

  void preRebuild() override;
  void addElementsAllCaches() override;

  /// Whether a rebuild must wait: mesh and hints are only there in a traversal. The next one then rebuilds. Asked first
  /// in rebuild().
  int isPostponed();
  /// The mesh on the state, settled by preRebuild(); null if there is none. The chart is connected to it and to the
  /// data mapping there, so that changes of these objects themselves are seen.
  const PbMesh1D* currentMesh() const;
  /// How much longer lengths along x, y and z are in the picture than in the coordinates of the mesh.
  SbVec3f stretch() const;

 private:
  struct Inputs;

  std::unique_ptr<Inputs> m_chartInputs;
};

#endif
