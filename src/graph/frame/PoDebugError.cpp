#include <Ormelle/PoDebugError.h>

#include <cstdarg>
#include <cstdio>

SoErrorCB* PoDebugError::handlerCB = nullptr;
void* PoDebugError::cbData = nullptr;
SoType PoDebugError::classTypeId;

void PoDebugError::initClass() {
  if (classTypeId != SoType::badType()) return;
  classTypeId = SoType::createType(SoError::getClassTypeId(), "PoDebugError");
  if (!handlerCB) handlerCB = &SoError::defaultHandlerCB;
}

void PoDebugError::exitClass() {
  if (classTypeId == SoType::badType()) return;
  SoType::removeType(classTypeId.getName());
  classTypeId = SoType::badType();
}

SoType PoDebugError::getClassTypeId() { return classTypeId; }
SoType PoDebugError::getTypeId() const { return classTypeId; }

void PoDebugError::setHandlerCallback(SoErrorCB* callback, void* data) {
  handlerCB = callback ? callback : &SoError::defaultHandlerCB;
  cbData = data;
}

SoErrorCB* PoDebugError::getHandlerCallback() { return handlerCB; }
void* PoDebugError::getHandlerData() { return cbData; }

SoErrorCB* PoDebugError::getHandler(void*& data) const {
  data = cbData;
  return handlerCB;
}

void PoDebugError::postP(Severity severity, const char* methodName, const char* message) {
  static const char* const openings[] = {"Ormelle error in ", "Ormelle warning in ", "Ormelle: in "};
  PoDebugError error(severity);
  SbString text(openings[severity]);
  text += methodName;
  text += "(): ";
  text += message;
  error.setDebugString(text.getString());
  // SoError::handleError doesn't ask the virtual getHandler, so the error is handed over here.
  void* data = nullptr;
  if (SoErrorCB* handler = error.getHandler(data)) handler(&error, data);
}

namespace {

using MessageBuffer = char[10000];

void expand(MessageBuffer& buffer, const char* format, va_list arguments) {
  if (std::vsnprintf(buffer, sizeof(buffer), format, arguments) < 0) buffer[0] = '\0';
}

}  // namespace

#define PO_POST(severity)             \
  MessageBuffer message;              \
  va_list arguments;                  \
  va_start(arguments, format);        \
  expand(message, format, arguments); \
  va_end(arguments);                  \
  postP(severity, methodName, message)

void PoDebugError::post(const char* methodName, const char* format, ...) { PO_POST(SEVERITY_ERROR); }
void PoDebugError::postWarning(const char* methodName, const char* format, ...) { PO_POST(SEVERITY_WARNING); }
void PoDebugError::postInfo(const char* methodName, const char* format, ...) { PO_POST(SEVERITY_INFO); }
