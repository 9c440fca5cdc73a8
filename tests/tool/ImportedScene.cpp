#include "ImportedScene.h"

#include <cstdlib>
#include <sstream>

std::string ImportTest::imported(const std::string& name, const std::string& bytes) {
  writeFile(name, bytes);
  m_said = runWell("convert " + name + " scene.iv").out;
  runWell("info scene.iv");
  return readFile(path("scene.iv"));
}

std::vector<double> numbersAfter(const std::string& scene, const std::string& line, std::size_t from) {
  std::vector<double> numbers;
  std::size_t at = scene.find(line, from);
  if (at == std::string::npos) {
    ADD_FAILURE() << "there is no \"" << line << "\"";
    return numbers;
  }
  at = scene.find('\n', at);
  const std::size_t next = scene.find_first_of("#}", at);
  std::istringstream text(scene.substr(at, scene.rfind('\n', next) - at));
  for (std::string word; text >> word;) {
    char* end = nullptr;
    const double number = std::strtod(word.c_str(), &end);
    if (*end != '\0') break;
    numbers.push_back(number);
  }
  return numbers;
}

std::vector<double> valuesOf(const std::string& scene, const std::string& set) {
  return numbersAfter(scene, "\"" + set + "\"   # set name");
}
