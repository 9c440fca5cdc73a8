// Arrays of VTK as sets of values, vectors and texts.

#include <vtkDataArray.h>
#include <vtkDataSetAttributes.h>
#include <vtkStringArray.h>
#include <vtkUnsignedCharArray.h>

#include <cmath>

#include "read_vtk_sets.h"

namespace importer {

namespace {

// What a name stands for where one array holds several values: the components of vectors and tensors.
std::string componentName(int component, int count) {
  static constexpr const char* kSix[] = {"xx", "yy", "zz", "xy", "yz", "xz"};
  static constexpr const char* kNine[] = {"xx", "xy", "xz", "yx", "yy", "yz", "zx", "zy", "zz"};
  if (count == 6) return kSix[component];
  if (count == 9) return kNine[component];
  return std::to_string(component);
}

std::vector<float> component(vtkDataArray* array, int index, Dataset& data) {
  std::vector<float> values;
  values.reserve(static_cast<std::size_t>(array->GetNumberOfTuples()));
  constexpr double kExact = 1 << 24;
  const bool isWhole = array->GetDataType() != VTK_FLOAT && array->GetDataType() != VTK_DOUBLE;
  bool isRounded = false, isTooLarge = false;
  for (vtkIdType i = 0; i < array->GetNumberOfTuples(); ++i) {
    const double value = array->GetComponent(i, index);
    const float stored = toFloat(value);
    isRounded = isRounded || (isWhole && std::abs(value) > kExact && static_cast<double>(stored) != value);
    isTooLarge = isTooLarge || (std::isfinite(value) && std::isnan(stored));
    values.push_back(stored);
  }
  const std::string name = array->GetName() ? array->GetName() : "";
  if (isRounded) data.note("whole numbers of \"" + name + "\" beyond 16777216 were rounded");
  if (isTooLarge) data.note("values of \"" + name + "\" beyond 3.4e38 are undefined");
  return values;
}

void addArray(vtkDataArray* array, const std::string& name, Binding binding, Piece& piece, Dataset& data) {
  constexpr int kMostComponents = 64;
  const int count = array->GetNumberOfComponents();
  if (count == 1) {
    piece.scalars.push_back({name, binding, component(array, 0, data)});
  } else if (count == 2 || count == 3) {
    VectorSet& set = piece.vectors.emplace_back(VectorSet{name, binding, {}});
    set.values.reserve(static_cast<std::size_t>(array->GetNumberOfTuples()));
    for (vtkIdType i = 0; i < array->GetNumberOfTuples(); ++i)
      set.values.push_back({toFloat(array->GetComponent(i, 0)), toFloat(array->GetComponent(i, 1)),
                            count == 3 ? toFloat(array->GetComponent(i, 2)) : 0.0F});
    if (count == 2) data.note("\"" + name + "\" has two values each and became vectors with z 0");
  } else if (count > kMostComponents) {
    data.note("\"" + name + "\" has " + std::to_string(count) + " values each and was left out");
  } else {
    for (int i = 0; i < count; ++i)
      piece.scalars.push_back({name + " " + componentName(i, count), binding, component(array, i, data)});
    data.note("\"" + name + "\" has " + std::to_string(count) + " values each, kept as a set for each of them");
  }
}

// Which arrays to take first: the one that the file names as its scalars; last, numbers that only name things.
std::vector<vtkAbstractArray*> sorted(vtkDataSetAttributes* attributes) {
  std::vector<vtkAbstractArray*> arrays, last;
  vtkAbstractArray* scalars = attributes->GetScalars();
  if (scalars) arrays.push_back(scalars);
  for (int i = 0; i < attributes->GetNumberOfArrays(); ++i) {
    vtkAbstractArray* array = attributes->GetAbstractArray(i);
    if (!array || array == scalars) continue;
    const bool isName = array == attributes->GetGlobalIds() || array == attributes->GetPedigreeIds();
    (isName ? last : arrays).push_back(array);
  }
  arrays.insert(arrays.end(), last.begin(), last.end());
  return arrays;
}

}  // namespace

void addVtkArrays(vtkDataSetAttributes* attributes, Binding binding, vtkIdType count, Piece& piece, Dataset& data) {
  int numUnnamed = 0;
  for (vtkAbstractArray* array : sorted(attributes)) {
    std::string name = array->GetName() ? array->GetName() : "";
    if (name == vtkDataSetAttributes::GhostArrayName()) continue;
    if (name.empty()) name = "values " + std::to_string(++numUnnamed);
    if (array->GetNumberOfTuples() != count) {
      data.note("\"" + name + "\" has " + std::to_string(array->GetNumberOfTuples()) + " values for " +
                std::to_string(count) + (binding == Binding::NODE ? " nodes" : " cells") + " and was left out");
      continue;
    }
    if (auto* numbers = vtkDataArray::SafeDownCast(array)) {
      addArray(numbers, name, binding, piece, data);
    } else if (auto* texts = vtkStringArray::SafeDownCast(array);
               texts && binding == Binding::NODE && texts->GetNumberOfComponents() == 1) {
      StringSet& set = piece.strings.emplace_back(StringSet{name, {}});
      for (vtkIdType i = 0; i < count; ++i) set.values.push_back(texts->GetValue(i));
    } else {
      data.note("\"" + name + "\" holds no numbers and was left out");
    }
  }
}

const unsigned char* vtkGhostsOf(vtkDataSetAttributes* attributes, vtkIdType count) {
  auto* ghosts =
      vtkUnsignedCharArray::SafeDownCast(attributes->GetAbstractArray(vtkDataSetAttributes::GhostArrayName()));
  return ghosts && ghosts->GetNumberOfTuples() == count && ghosts->GetNumberOfComponents() == 1 && count > 0
             ? ghosts->GetPointer(0)
             : nullptr;
}

}  // namespace importer
