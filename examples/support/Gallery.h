#ifndef ORMELLE_GALLERY_H
#define ORMELLE_GALLERY_H

#include <Inventor/SbColor.h>
#include <Inventor/SbVec3f.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

class SoNode;

/// What the programs of the gallery need: data, a stage, and a picture with its caption.
///
/// @code
/// int main() {
///   return gallery::run([] {
///     const gallery::DataSet air("atmosphere_january");
///     ...
///     gallery::render(scene, "12_winds", {.title = "...", .caption = "...", .source = air.source()});
///   });
/// }
/// @endcode
namespace gallery {

/// Starts the library, runs `draw`, and turns what it throws into a sentence on the error output. Returns the
/// program's exit status.
int run(const std::function<void()>& draw);

/// A table of text; the first line of its file names the columns.
struct Table {
  std::vector<std::string> names;
  std::vector<std::vector<std::string>> rows;

  std::size_t numRows() const { return rows.size(); }
  /// A column as text, or as numbers, where an empty cell is NaN. Throws if there is no such column, or if a cell is
  /// no number.
  std::vector<std::string> texts(const std::string& column) const;
  std::vector<float> numbers(const std::string& column) const;
};

/// One folder of data/, or of the folder that ORMELLE_DATA_DIR names. What isn't there or can't be read throws.
class DataSet {
 public:
  explicit DataSet(const std::string& name);

  const std::string& title() const { return m_title; }
  const std::string& source() const { return m_source; }
  const std::string& licence() const { return m_licence; }
  /// Number of nodes along x, y (and z); empty if the set is no grid.
  const std::vector<int>& dims() const { return m_dims; }
  /// Where the first node of a regular grid is, and the steps between nodes; empty if the set is none.
  const std::vector<float>& origin() const { return m_origin; }
  const std::vector<float>& spacing() const { return m_spacing; }

  /// The whole of `<file>.raw`: floats or integers of 32 bits, little-endian.
  std::vector<float> floats(const std::string& file) const;
  std::vector<int32_t> ints(const std::string& file) const;
  /// The set's table, `<name>.csv`.
  Table table() const;

 private:
  std::string m_name;
  std::string m_folder;
  std::string m_title;
  std::string m_source;
  std::string m_licence;
  std::vector<int> m_dims;
  std::vector<float> m_origin;
  std::vector<float> m_spacing;
};

/// Values of a grid whose first index runs fastest, in the order of the library's grids, whose last one does. Each
/// node has `components` values, which stay together.
std::vector<float> lastIndexFastest(const std::vector<float>& values, int numX, int numY, int numZ = 1,
                                    int components = 1);

/// What to draw a scene with, and what to say of it.
struct Picture {
  std::string title;         ///< stands above the scene and on the gallery's page
  std::string caption;       ///< a sentence or two for the page
  std::string source = {};   ///< where the data comes from; empty: computed
  std::string licence = {};  ///< of the data
  bool isTitleShown = true;  ///< whether the title is in the picture too
  /// Direction of looking, when the scene has no camera of its own: by default the face of a flat scene, else from the
  /// upper right in front.
  std::optional<SbVec3f> view = {};
  SbVec3f up = SbVec3f(0.0f, 1.0f, 0.0f);
  bool isOrthographic = false;
  /// The background, running from the upper to the lower colour.
  SbColor upperColor = SbColor(1.0f, 1.0f, 1.0f);
  SbColor lowerColor = SbColor(1.0f, 1.0f, 1.0f);
  int width = 1600;
  int height = 1200;
  int samples = 16;
};

/// A soft background for solid bodies: `{.upperColor = kSoftUpper, .lowerColor = kSoftLower}`.
inline const SbColor kSoftUpper(0.80f, 0.85f, 0.91f);
inline const SbColor kSoftLower(0.98f, 0.98f, 0.99f);

/// Draws `scene` into `<out>/<name>.png` and writes `<out>/<name>.json` for the gallery's page beside it. `<out>` is
/// what ORMELLE_GALLERY_DIR names, else the folder `gallery` of the build. Throws if that fails. `program` is the
/// source that calls (clang 14 has no std::source_location).
void render(SoNode* scene, const std::string& name, const Picture& picture, const char* program = __builtin_FILE());

}  // namespace gallery

#endif
