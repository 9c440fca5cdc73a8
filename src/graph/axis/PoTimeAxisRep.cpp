// The plain structures of the public interface, and the way to them from what the library works with.

#include <Ormelle/PoTimeAxis.h>

#include <cstring>
#include <string>

#include "graph/axis/PiTimeAxisLanguage.h"

namespace {

char* newText(const char* text, size_t length) {
  char* copy = new char[length + 1];
  std::memcpy(copy, text, length);
  copy[length] = 0;
  return copy;
}

char* newText(const char* text) { return text ? newText(text, std::strlen(text)) : nullptr; }

char* newText(const std::string& text) { return text.empty() ? nullptr : newText(text.data(), text.size()); }

template <class T>
T* newArray(size_t num) {
  return num > 0 ? new T[num]() : nullptr;
}

void convert(const PiDateLevel& from, PoTimeAxis::Tdate_axis_level_rep& to) {
  to.step = static_cast<PoTimeAxis::Tdate_step>(from.unit);
  to.numStep = from.numStep;
  to.string = from.hasPrefix ? newText(from.prefix.data(), from.prefix.size()) : nullptr;
  to.numElem = static_cast<int>(from.elements.size());
  to.elems = newArray<PoTimeAxis::Tdate_elem>(from.elements.size());
  for (size_t i = 0; i < from.elements.size(); ++i) {
    to.elems[i].count = from.elements[i].count;
    to.elems[i].form = static_cast<PoTimeAxis::Tdate_elem_form>(from.elements[i].form);
    to.elems[i].text = newText(from.elements[i].text);
  }
}

void setError(int* error, bool isError) {
  if (error) *error = isError ? 1 : 0;
}

}  // namespace

void PoTimeAxis::parseAxisRep(const char* string, int separator, Tdate_axis_rep* rep, int* error) {
  const auto parsed = PiTimeAxisLanguage::parseAxisRep(string ? string : "", separator);
  setError(error, !parsed);
  if (!rep) return;
  *rep = {};
  if (!parsed) return;
  rep->numLevel = static_cast<int>(parsed->size());
  rep->levels = newArray<Tdate_axis_level_rep>(parsed->size());
  for (size_t i = 0; i < parsed->size(); ++i) convert((*parsed)[i], rep->levels[i]);
}

void PoTimeAxis::parseDateList(const char* string, Tdate_list* list, int* error) {
  const auto parsed = PiTimeAxisLanguage::parseDateList(string ? string : "");
  setError(error, !parsed);
  if (!list) return;
  *list = {};
  if (!parsed) return;
  list->numDate = static_cast<int>(parsed->size());
  list->dates = newArray<Tdate_list::Date>(parsed->size());
  for (size_t i = 0; i < parsed->size(); ++i)
    list->dates[i] = {(*parsed)[i].value, static_cast<Tdate_step>((*parsed)[i].unit)};
}

void PoTimeAxis::copyDateRep(const Tdate_axis_rep* from, Tdate_axis_rep* to) {
  if (!from || !to || from == to) return;
  *to = *from;
  to->levels = newArray<Tdate_axis_level_rep>(static_cast<size_t>(from->numLevel));
  for (int i = 0; i < from->numLevel; ++i) {
    const Tdate_axis_level_rep& level = from->levels[i];
    to->levels[i] = level;
    to->levels[i].string = newText(level.string);
    to->levels[i].elems = newArray<Tdate_elem>(static_cast<size_t>(level.numElem));
    for (int e = 0; e < level.numElem; ++e) {
      to->levels[i].elems[e] = level.elems[e];
      to->levels[i].elems[e].text = newText(level.elems[e].text);
    }
  }
}

void PoTimeAxis::freeDateAxisRep(Tdate_axis_rep* rep) {
  if (!rep) return;
  for (int i = 0; i < rep->numLevel; ++i) {
    for (int e = 0; e < rep->levels[i].numElem; ++e) delete[] rep->levels[i].elems[e].text;
    delete[] rep->levels[i].elems;
    delete[] rep->levels[i].string;
  }
  delete[] rep->levels;
  *rep = {};
}

void PoTimeAxis::freeDateList(Tdate_list* list) {
  if (!list) return;
  delete[] list->dates;
  *list = {};
}

void PoTimeAxis::freeDateAxisRepList(int n, Tdate_axis_rep* reps) {
  if (!reps) return;
  for (int i = 0; i < n; ++i) freeDateAxisRep(&reps[i]);
  delete[] reps;
}
