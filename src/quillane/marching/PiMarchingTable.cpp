#include "quillane/marching/PiMarchingTable.h"

#include <cassert>
#include <cstdio>
#include <sstream>
#include <string>

namespace {

std::vector<int> parseNumbers(const char* text) {
  std::istringstream in(text);
  std::vector<int> numbers;
  for (int number; in >> number;) numbers.push_back(number);
  assert(in.eof() && "a row of a marching table holds something that isn't a number");
  return numbers;
}

// Applies a run of turns such as "X2Y" from left to right.
std::unique_ptr<PiMarchingCase> applyTurns(const PiMarchingCase& base, const std::string& turns) {
  std::unique_ptr<PiMarchingCase> result;
  const PiMarchingCase* current = &base;
  for (std::size_t i = 0; i < turns.size();) {
    const char axis = turns[i++];
    const int count = i < turns.size() && turns[i] >= '1' && turns[i] <= '9' ? turns[i++] - '0' : 1;
    assert((axis == 'X' || axis == 'Y' || axis == 'Z') && "unknown axis in a row of a marching table");
    result = axis == 'X' ? current->getRotX(count) : axis == 'Y' ? current->getRotY(count) : current->getRotZ(count);
    assert(result && "a row of a marching table asks for a turn that is no symmetry of the cell");
    current = result.get();
  }
  return result;
}

}  // namespace

void PiMarchingTable::clear() {
  m_lookup.fill(nullptr);
  m_cases.clear();
  m_count = 0;
  m_isBuilt = false;
}

PiMarchingCase* PiMarchingTable::addMC(std::unique_ptr<PiMarchingCase> newCase) {
  PiMarchingCase*& slot = m_lookup[newCase->getId()];
  if (slot)
    std::printf("%3d : error caseId %3d already set !!!\n", m_count, newCase->getId());
  else
    slot = newCase.get();
  ++m_count;
  m_cases.push_back(std::move(newCase));
  return m_cases.back().get();
}

PiMarchingCase* PiMarchingTable::addMCBoth(std::unique_ptr<PiMarchingCase> newCase) {
  PiMarchingCase* added = addMC(std::move(newCase));
  addMC(added->getReverse());
  return added;
}

void PiMarchingTable::addRow(std::unique_ptr<PiMarchingCase> base, const PiBaseCase& row) {
  base->setStripSet(parseNumbers(row.strips));
  base->setOptQuad(parseNumbers(row.optQuad));
  base->setCompletion(parseNumbers(row.completion));
  const PiMarchingCase& added = *addMCBoth(std::move(base));
  std::istringstream rotations(row.rotations);
  for (std::string turns; std::getline(rotations, turns, ',');) addMCBoth(applyTurns(added, turns));
}
