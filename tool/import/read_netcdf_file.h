#ifndef ORMELLE_TOOL_IMPORT_READ_NETCDF_FILE_H
#define ORMELLE_TOOL_IMPORT_READ_NETCDF_FILE_H

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <vector>

#include "Dataset.h"

namespace importer {

struct NetcdfDimension {
  std::string name;
  std::size_t length = 0;
};

struct NetcdfVariable {
  int id = -1;
  std::string name;
  int type = 0;
  std::vector<int> dimensions;
  std::string units, standardName, longName;
  bool isCoordinate = false;

  /// What people call it: its name with the unit. `member` says which of several it is.
  std::string title(const std::string& member = {}) const;
  /// Whether it holds numbers rather than texts or compounds.
  bool isNumber() const;
  /// Whether it holds a text for each index along its first dimension.
  bool isTexts() const;
};

/// An open file: its dimensions and variables, and their numbers with packing undone and missing values as NaN. What
/// the library says is wrong, and what can't be held, is a Failure.
class NetcdfFile {
 public:
  /// Notes in `data` what lies outside of the variables of the root.
  NetcdfFile(const std::string& name, Dataset& data);
  ~NetcdfFile();
  NetcdfFile(const NetcdfFile&) = delete;
  NetcdfFile& operator=(const NetcdfFile&) = delete;

  const std::vector<NetcdfDimension>& dimensions() const { return m_dimensions; }
  const std::vector<NetcdfVariable>& variables() const { return m_variables; }
  std::vector<NetcdfVariable>& variables() { return m_variables; }
  std::size_t lengthOf(int dimension) const { return m_dimensions[static_cast<std::size_t>(dimension)].length; }
  const std::string& nameOf(int dimension) const { return m_dimensions[static_cast<std::size_t>(dimension)].name; }

  /// An attribute as text, without control characters; empty if there is none.
  std::string text(const NetcdfVariable& variable, const char* attribute) const;

  /// The first of the texts of a variable of such.
  std::vector<std::string> textsOf(const NetcdfVariable& variable, std::size_t atMost) const;

  /// Throws Failure for more than fits into memory, or more than a file without compression holds.
  void checkSize(const NetcdfVariable& variable) const;
  /// All values of a variable.
  std::vector<double> numbersOf(const NetcdfVariable& variable) const;
  /// The values of a part of a variable, the last dimension fastest. With each dimension d of the variable, its value
  /// goes to the node that `strides[d]` times the index along it add up to.
  std::vector<float> partOf(const NetcdfVariable& variable, const std::vector<std::size_t>& start,
                            const std::vector<std::size_t>& count, const std::vector<std::size_t>& strides) const;

 private:
  void takeInventory(Dataset& data);
  void noteAttributes(int count, Dataset& data) const;

  int m_id = -1;
  std::uintmax_t m_numBytes = 0;
  bool m_isClassic = true;
  std::vector<NetcdfDimension> m_dimensions;
  std::vector<NetcdfVariable> m_variables;
};

bool isOneOf(const std::string& word, std::initializer_list<const char*> words);

}  // namespace importer

#endif
