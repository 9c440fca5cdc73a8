#ifndef ORMELLE_TESTS_PARTTEXTS_H
#define ORMELLE_TESTS_PARTTEXTS_H

#include <string>
#include <vector>

class SoBaseKit;

/// What the texts below a part of a kit read as, in the order in which they are drawn; none without the part.
std::vector<std::string> textsIn(SoBaseKit& kit, const char* part);

#endif
