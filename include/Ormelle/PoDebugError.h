#ifndef ORMELLE_PODEBUGERROR_H
#define ORMELLE_PODEBUGERROR_H

#include <Inventor/errors/SoError.h>
#include <Ormelle/OrmelleExport.h>

/// Errors, warnings and remarks of the library, told through the toolkit's error mechanism.
///
/// The default handler is the toolkit's, which prints. With a handler of your own you get a PoDebugError whose text is
/// "Ormelle error in " + method + "(): " + message (or the forms for warnings and remarks), without a line end.
/// The handler is global and isn't locked: set it before use. Its type is registered as "PoDebugError".
class ORMELLE_API PoDebugError : public SoError {
 public:
  enum Severity { SEVERITY_ERROR = 0, SEVERITY_WARNING = 1, SEVERITY_INFO = 2 };

  /// Posts "Ormelle error in <methodName>(): <message>"; `format` and what follows as for printf. A message of more
  /// than 10,000 characters is cut.
  static void post(const char* methodName, const char* format, ...);
  static void postWarning(const char* methodName, const char* format, ...);
  static void postInfo(const char* methodName, const char* format, ...);
  /// The same with a message that is already formatted.
  static void postP(Severity severity, const char* methodName, const char* message);

  /// Null sets the default handler.
  static void setHandlerCallback(SoErrorCB* callback, void* data);
  static SoErrorCB* getHandlerCallback();
  static void* getHandlerData();

  static void initClass();
  static void exitClass();
  static SoType getClassTypeId();
  SoType getTypeId() const override;
  Severity getSeverity() const { return m_severity; }

 protected:
  SoErrorCB* getHandler(void*& data) const override;

 private:
  explicit PoDebugError(Severity severity) : m_severity(severity) {}

  static SoErrorCB* handlerCB;
  static void* cbData;
  static SoType classTypeId;
  Severity m_severity;
};

#endif
