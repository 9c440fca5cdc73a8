#ifndef ORMELLE_POEXCEPTION_H
#define ORMELLE_POEXCEPTION_H

#include <csetjmp>

class SbString;

/// Root of the library's exceptions, which aren't language exceptions but jumps to the innermost guarded block:
/// @code
/// PoException::Frame frame;
/// PoException::push(frame);
/// if (setjmp(PoException::getTopBuffer()) == 0) {
///   ...                              // may raise
///   PoException::endBlock(0);
/// } else {
///   PoException::pop();
///   ...                              // look at PoException::getInFlight(); may call raiseAgain()
///   PoException::endBlock(1);
/// }
/// @endcode
/// A jump runs no destructors: between setjmp and what may raise, no object may live that has one to run.
///
/// Frames and the exception in flight are globals without a lock.
class PoException {
 public:
  struct Frame {
    Frame* outer;
    int isAllocated;
    std::jmp_buf buffer;
  };

  virtual ~PoException() = default;
  /// Whether `className` is the name of this class or of one it derives from.
  virtual int isOfType(const SbString& className) const;

  /// Makes `frame`, which lives on the caller's stack, or an allocated one the top frame.
  static void push(Frame& frame);
  static void push();
  /// Takes the top frame away, and frees it if it was allocated. Does nothing without one.
  static void pop();
  /// The buffer of the top frame, which must exist, for setjmp.
  static std::jmp_buf& getTopBuffer() { return s_top->buffer; }

  /// Puts `exception`, which it owns from now on, in flight in place of the one before and jumps to the top frame.
  /// Without a frame the program ends with status -1.
  [[noreturn]] static void raise(PoException* exception);
  /// Jumps to the top frame with the exception in flight. Without a frame the program ends with status -1.
  [[noreturn]] static void raiseAgain();
  /// Ends a guarded block: `state` 0 pops the frame of a block that ran through; 1 frees the exception that it handled.
  static void endBlock(int state);

  /// The exception in flight; null if there is none.
  static const PoException* getInFlight() { return s_inFlight; }

 private:
  static void setInFlight(PoException* exception);

  static Frame* s_top;
  static PoException* s_inFlight;
};

/// A search found nothing.
class ElementNotFound : public PoException {
 public:
  int isOfType(const SbString& className) const override;
};

#endif
