#ifndef ORMELLE_PIGLCONTEXT_H
#define ORMELLE_PIGLCONTEXT_H

#include <cstdint>
#include <string>

/// An OpenGL context with a picture buffer of its own, made through EGL without any display.
///
/// The toolkit by itself asks for a GLX context, which needs an X server; with or without one, what is drawn through
/// this class is the same.
class PiGlContext {
 public:
  /// Makes a context that draws into `width` by `height` pixels. On failure isValid() is false and error() is a
  /// sentence without a final stop; nothing else may be called then.
  PiGlContext(int width, int height);
  ~PiGlContext();
  PiGlContext(const PiGlContext&) = delete;
  PiGlContext& operator=(const PiGlContext&) = delete;

  bool isValid() const { return m_error.empty(); }
  const std::string& error() const { return m_error; }
  /// What tells the toolkit's GL objects of this context from those of another.
  uint32_t cacheContext() const { return m_cacheContext; }

  /// Makes the context current; release() makes the one that was current before current again.
  bool makeCurrent();
  void release();

  /// Lets the toolkit make its own off-screen contexts (textures drawn from scenes, `SoOffscreenRenderer`) through
  /// EGL too. `SoDB::finish` forgets this, so call it again after each start of the toolkit.
  static void installForToolkit();

 private:
  struct Current {
    void* context = nullptr;
    void* draw = nullptr;
    void* read = nullptr;
  };

  std::string m_error;
  void* m_context = nullptr;
  void* m_surface = nullptr;
  uint32_t m_cacheContext = 0;
  Current m_previous;
};

#endif
