#ifndef ORMELLE_TESTS_IMPORTEDSCENE_H
#define ORMELLE_TESTS_IMPORTEDSCENE_H

#include <string>
#include <vector>

#include "ToolRun.h"

/// Imports files and reads numbers back out of the scenes.
class ImportTest : public ToolTest {
 protected:
  /// Imports a file and returns the scene.
  std::string imported(const std::string& name, const std::string& bytes);
  /// What the last import said.
  const std::string& said() const { return m_said; }

 private:
  std::string m_said;
};

/// The numbers in the lines behind a line of a scene, up to one with a comment or a bracket.
std::vector<double> numbersAfter(const std::string& scene, const std::string& line, std::size_t from = 0);

/// The numbers of a set of values or vectors.
std::vector<double> valuesOf(const std::string& scene, const std::string& set);

#endif
