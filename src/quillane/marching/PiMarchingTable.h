#ifndef ORMELLE_PIMARCHINGTABLE_H
#define ORMELLE_PIMARCHINGTABLE_H

#include <array>
#include <memory>
#include <vector>

#include "quillane/marching/PiBaseCases.h"
#include "quillane/marching/PiMarchingCase.h"

/// The marching cases of one kind of cell by id. Empty until it is built; read-only while it stands.
class PiMarchingTable {
 public:
  bool isBuilt() const { return m_isBuilt; }
  /// Number of cases added since the table was last empty, those that clashed included.
  int count() const { return m_count; }
  /// The case with that id; null if there is none.
  PiMarchingCase* at(unsigned char id) const { return m_lookup[id]; }

  /// Builds the table of the rows, `Case` being the class of their cases. Does nothing if the table stands already.
  template <class Case>
  void build(std::span<const PiBaseCase> rows) {
    if (m_isBuilt) return;
    m_isBuilt = true;
    for (std::size_t type = 0; type < rows.size(); ++type)
      addRow(std::make_unique<Case>(static_cast<unsigned char>(type), rows[type].id), rows[type]);
  }
  /// Deletes all cases.
  void clear();

  /// Stores a case under its id. An id that is taken already is reported on the standard output and keeps its first
  /// case. Returns the case given, which the table owns in either event.
  PiMarchingCase* addMC(std::unique_ptr<PiMarchingCase> newCase);
  /// Adds a case and its reverse. Returns the case given.
  PiMarchingCase* addMCBoth(std::unique_ptr<PiMarchingCase> newCase);

 private:
  void addRow(std::unique_ptr<PiMarchingCase> base, const PiBaseCase& row);

  std::array<PiMarchingCase*, 256> m_lookup{};
  std::vector<std::unique_ptr<PiMarchingCase>> m_cases;
  int m_count = 0;
  bool m_isBuilt = false;
};

#endif
