#ifndef ORMELLE_TOOL_VIEW_SURROUNDINGS_H
#define ORMELLE_TOOL_VIEW_SURROUNDINGS_H

#include <Inventor/SbMatrix.h>
#include <Inventor/SbVec3f.h>
#include <Inventor/SbViewportRegion.h>
#include <Ormelle/PbDateFormatMapping.h>

#include <optional>
#include <string>
#include <utility>
#include <vector>

class PbDataMapping;
class PbMesh;
class PoAxis;
class PoBase;
class SoCallbackAction;
class SoFullPath;
class SoNode;

namespace view {

/// How the numbers along one direction of a kit's data are written: as by the axis beside it.
struct Scale {
  enum class Kind { Numbers, Dates, Logarithms };

  Kind kind = Kind::Numbers;
  bool hasAxis = false;
  double factor = 1;  ///< from the kit's coordinates to those of the axis
  double offset = 0;
  PbDateFormatMapping dates;
  bool withTime = false;
  std::string unit;

  /// A number of the data, with the unit of the axis.
  std::string data(float coordinate) const;
  /// What goes behind a number of the data that is told as it is: the unit, or in parentheses what the axis makes of
  /// it.
  std::string behind(float coordinate) const;
  /// A number measured in the picture, or counted from `origin`.
  std::string place(double coordinate, std::optional<double> origin = std::nullopt) const;

 private:
  std::optional<std::string> translated(double coordinate) const;
};

/// What stands round the kits of a scene and says what their numbers mean: meshes, axes, legends.
class Surroundings {
 public:
  /// Looks at what the toolkit would draw of `root`. What is found is good as long as the scene doesn't change.
  Surroundings(SoNode* root, const SbViewportRegion& viewport);
  ~Surroundings();
  Surroundings(const Surroundings&) = delete;
  Surroundings& operator=(const Surroundings&) = delete;

  /// A kit where a path meets it.
  struct Kit;
  /// The kit at place `index` of `path`; null if it isn't drawn.
  const Kit* find(const SoFullPath& path, int index) const;

  /// The mesh that a kit has or finds; null if there is none.
  static const PbMesh* meshOf(const Kit* kit);
  /// What an axis along `direction` (0 x, 1 y, 2 z), or a mapping to dates, says of a coordinate there.
  Scale scaleOf(const Kit* kit, int direction, float coordinate) const;
  /// What a legend writes behind the values that colour a kit; empty if none does.
  std::string unitOf(const Kit* kit) const;

 private:
  void note(SoCallbackAction& action, const PoBase& node);

  std::vector<Kit> m_kits;
};

}  // namespace view

#endif
