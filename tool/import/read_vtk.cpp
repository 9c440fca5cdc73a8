// VTK's own formats, by VTK's own readers: legacy files and XML files, serial, parallel and in blocks.

#include <vtkCellData.h>
#include <vtkCompositeDataIterator.h>
#include <vtkCompositeDataSet.h>
#include <vtkFieldData.h>
#include <vtkGenericDataObjectReader.h>
#include <vtkInformation.h>
#include <vtkInformationDoubleVectorKey.h>
#include <vtkOutputWindow.h>
#include <vtkPointData.h>
#include <vtkPolyData.h>
#include <vtkSmartPointer.h>
#include <vtkStreamingDemandDrivenPipeline.h>
#include <vtkUnstructuredGrid.h>
#include <vtkXMLGenericDataObjectReader.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <filesystem>

#include "Readers.h"
#include "read_vtk.h"
#include "read_vtk_guard.h"
#include "read_vtk_sets.h"

namespace importer {

namespace {

// ---- What VTK has to say --------------------------------------------------------------------------------------------

// Keeps the first error.
class ErrorCatcher : public vtkOutputWindow {
 public:
  static ErrorCatcher* New() {
    auto* catcher = new ErrorCatcher;
    catcher->InitializeObjectBase();
    return catcher;
  }

  void DisplayText(const char*) override {}
  void DisplayErrorText(const char* text) override {
    if (m_first.empty() && text) m_first = text;
  }
  void DisplayWarningText(const char*) override {}
  void DisplayGenericWarningText(const char*) override {}
  void DisplayDebugText(const char*) override {}

  // "ERROR: In file, line 7\nvtkReader (0x5581): Words\n" as part of a sentence.
  std::string sentence() const {
    std::string text = m_first;
    const std::size_t object = text.find("): ");
    if (object != std::string::npos) text.erase(0, object + 3);
    std::string words;
    for (const char c : text) {
      if (c == ' ' || c == '\n' || c == '\t' || c == '\r') {
        if (!words.empty() && words.back() != ' ') words += ' ';
      } else {
        words += static_cast<unsigned char>(c) < 32 || c == 127 ? '?' : c;
      }
    }
    constexpr std::size_t kLongest = 300;
    if (words.size() > kLongest) words.resize(kLongest);
    while (!words.empty() && (words.back() == ' ' || words.back() == '.')) words.pop_back();
    return words.empty() ? "VTK can't read it" : "VTK can't read it: " + words;
  }
  bool hasError() const { return !m_first.empty(); }

 private:
  std::string m_first;
};

// ---- Files ----------------------------------------------------------------------------------------------------------

// Whether z of a grid with axes of its own runs so much farther than x and y that it can't be a length as they are: a
// depth over degrees, for example.
bool isNeedle(const Piece& piece) {
  constexpr double kMost = 10;
  if (piece.kind != PieceKind::RECTILINEAR_GRID) return false;
  std::array<double, 3> extents{};
  for (std::size_t axis = 0; axis < 3; ++axis)
    if (!piece.axes[axis].empty()) extents[axis] = std::abs(piece.axes[axis].back() - piece.axes[axis].front());
  return extents[2] > kMost * std::max(extents[0], extents[1]);
}

void takeSet(vtkDataSet* set, const std::string& name, Dataset& data) {
  if (set->GetNumberOfPoints() == 0) {
    data.note(name + " has no nodes and was left out");
    return;
  }
  Piece piece;
  piece.name = name;
  addVtkArrays(set->GetPointData(), Binding::NODE, set->GetNumberOfPoints(), piece, data);
  addVtkArrays(set->GetCellData(), Binding::CELL, set->GetNumberOfCells(), piece, data);
  if (vtkPolyData::SafeDownCast(set) || vtkUnstructuredGrid::SafeDownCast(set)) {
    takeVtkCells(set, piece, data);
  } else {
    takeVtkGrid(set, piece, data);
    if (isNeedle(piece)) data.hasOwnHeights = true;
  }
  vtkFieldData* whole = set->GetFieldData();
  for (int i = 0; whole && i < whole->GetNumberOfArrays(); ++i) {
    vtkAbstractArray* array = whole->GetAbstractArray(i);
    const char* field = array ? array->GetName() : nullptr;
    data.note(std::string("\"") + (field ? field : "field data") + "\" belongs to the whole and was left out");
  }
  data.pieces.push_back(std::move(piece));
}

std::string nameOfBlock(vtkCompositeDataIterator* block, const std::string& name, std::size_t number) {
  const char* own =
      block->HasCurrentMetaData() ? block->GetCurrentMetaData()->Get(vtkCompositeDataSet::NAME()) : nullptr;
  return own && *own ? own : name + " " + std::to_string(number);
}

// The time to ask for, of a file that has several; null otherwise.
const double* chooseTime(vtkInformation& output, Dataset& data) {
  vtkInformationDoubleVectorKey* const key = vtkStreamingDemandDrivenPipeline::TIME_STEPS();
  const int numSteps = output.Has(key) ? output.Length(key) : 0;
  if (numSteps < 2) return nullptr;
  const int step = std::min(readOptions().step, numSteps - 1);
  data.note("of the " + std::to_string(numSteps) + " time steps number " + std::to_string(step + 1) + " was taken");
  return output.Get(key) + step;
}

}  // namespace

Dataset readByVtk(vtkAlgorithm& reader, const std::string& file) {
  const auto errors = vtkSmartPointer<ErrorCatcher>::New();
  vtkOutputWindow::SetInstance(errors);
  reader.UpdateInformation();
  Dataset data;
  const double* time = errors->hasError() ? nullptr : chooseTime(*reader.GetOutputInformation(0), data);
  if (time)
    reader.UpdateTimeStep(*time);
  else
    reader.Update();
  vtkDataObject* output = reader.GetOutputDataObject(0);
  if (errors->hasError()) throw Failure(errors->sentence());
  if (!output) throw Failure("VTK can't read it");

  const std::string name = std::filesystem::path(file).stem().string();
  if (auto* set = vtkDataSet::SafeDownCast(output)) {
    takeSet(set, name, data);
  } else if (auto* blocks = vtkCompositeDataSet::SafeDownCast(output)) {
    const auto block = vtkSmartPointer<vtkCompositeDataIterator>::Take(blocks->NewIterator());
    std::size_t number = 0;
    for (block->InitTraversal(); !block->IsDoneWithTraversal(); block->GoToNextItem()) {
      ++number;
      if (auto* part = vtkDataSet::SafeDownCast(block->GetCurrentDataObject()))
        takeSet(part, nameOfBlock(block, name, number), data);
    }
  } else {
    throw Failure("it holds no mesh but a " + std::string(output->GetClassName()));
  }
  if (data.pieces.empty()) throw Failure("there is no data in it");
  return data;
}

Dataset readVtkLegacy(const std::string& file) {
  refuseBrokenLegacy(file);
  const auto reader = vtkSmartPointer<vtkGenericDataObjectReader>::New();
  reader->ReadAllScalarsOn();
  reader->ReadAllVectorsOn();
  reader->ReadAllNormalsOn();
  reader->ReadAllTensorsOn();
  reader->ReadAllColorScalarsOn();
  reader->ReadAllTCoordsOn();
  reader->ReadAllFieldsOn();
  reader->SetFileName(file.c_str());
  return readByVtk(*reader, file);
}

Dataset readVtkXml(const std::string& file) {
  refuseLies(file);
  const auto reader = vtkSmartPointer<vtkXMLGenericDataObjectReader>::New();
  reader->SetFileName(file.c_str());
  return readByVtk(*reader, file);
}

}  // namespace importer
