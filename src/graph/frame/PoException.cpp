#include "graph/frame/PoException.h"

#include <cstdlib>

#include <Inventor/SbString.h>

#include "graph/frame/PiMemory.h"

PoException::Frame* PoException::s_top = nullptr;
PoException* PoException::s_inFlight = nullptr;

int PoException::isOfType(const SbString& className) const { return className == "PoException"; }

int ElementNotFound::isOfType(const SbString& className) const {
  return className == "ElementNotFound" || PoException::isOfType(className);
}

void PoException::push(Frame& frame) {
  frame.outer = s_top;
  frame.isAllocated = 0;
  s_top = &frame;
}

void PoException::push() {
  Frame* frame = static_cast<Frame*>(PiMemory::allocate(sizeof(Frame)));
  if (!frame) std::exit(-1);  // what is raised in the block would reach a block that doesn't expect it
  push(*frame);
  frame->isAllocated = 1;
}

void PoException::pop() {
  Frame* frame = s_top;
  if (!frame) return;
  s_top = frame->outer;
  if (frame->isAllocated) PiMemory::free(frame);
}

void PoException::setInFlight(PoException* exception) {
  if (s_inFlight != exception) delete s_inFlight;
  s_inFlight = exception;
}

void PoException::raise(PoException* exception) {
  setInFlight(exception);
  raiseAgain();
}

void PoException::raiseAgain() {
  if (!s_top) {
    setInFlight(nullptr);
    std::exit(-1);
  }
  std::longjmp(s_top->buffer, 0);
}

void PoException::endBlock(int state) {
  if (state == 0)
    pop();
  else
    setInFlight(nullptr);
}
