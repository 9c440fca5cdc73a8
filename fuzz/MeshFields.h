#ifndef ORMELLE_FUZZ_MESHFIELDS_H
#define ORMELLE_FUZZ_MESHFIELDS_H

#include <Inventor/SoInput.h>
#include <Inventor/SoOutput.h>
#include <Ormelle/PoOrmelle.h>

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>

#include "nodes/field/PiMeshClasses.h"
#include "nodes/mesh/PiMeshNodeClasses.h"

/// What the fuzz targets of the mesh fields share with the program that makes their first inputs. An input is the
/// number of a field class in one byte, and then a value of that field.
class MeshFields {
 public:
  static constexpr const char* kTextHeader = "#Inventor V2.1 ascii\n\n";
  static constexpr const char* kBinaryHeader = "#Inventor V2.1 binary   \n";

#define PI_COUNT(Name) +1
  static constexpr unsigned kNum = 0 PI_FOR_EACH_MESH_CLASS(PI_COUNT);
#undef PI_COUNT

  static std::unique_ptr<PoSFMesh> make(unsigned number) {
    using Make = std::unique_ptr<PoSFMesh> (*)();
#define PI_MAKE_FIELD(Name) [] { return std::unique_ptr<PoSFMesh>(new PoSF##Name); },
    static constexpr Make kMake[] = {PI_FOR_EACH_MESH_CLASS(PI_MAKE_FIELD)};
#undef PI_MAKE_FIELD
    return kMake[number % kNum]();
  }

  static bool read(PoSFMesh& field, const std::string& file) {
    SoInput in;
    in.setBuffer(file.data(), file.size());
    return field.readValue(&in);
  }

  static std::string write(PoSFMesh& field, bool isBinary) {
    SoOutput out;
    out.setBinary(isBinary);
    out.setStage(SoOutput::WRITE);
    constexpr std::size_t kSize = 4096;
    out.setBuffer(std::malloc(kSize), kSize, [](void* memory, std::size_t size) { return std::realloc(memory, size); });
    field.writeValue(&out);
    void* buffer;
    std::size_t size;
    out.getBuffer(buffer, size);
    std::string file(static_cast<const char*>(buffer), size);
    std::free(buffer);
    return file;
  }

  /// Reads the input. What could be read must be written so that it comes back and is then written the same again, and
  /// what couldn't must leave no trace.
  static int check(const std::uint8_t* data, std::size_t size, bool isBinary) {
    if (size == 0) return 0;
    static const bool s_isInitialised = (PoOrmelle::init(), true);
    (void)s_isInitialised;
    const std::unique_ptr<PoSFMesh> field = make(data[0]), again = make(data[0]);
    const std::string file =
        (isBinary ? kBinaryHeader : kTextHeader) + std::string(reinterpret_cast<const char*>(data) + 1, size - 1);
    if (!read(*field, file)) {
      if (!field->isSame(*again)) std::abort();
    } else {
      for (const bool isWrittenBinary : {!isBinary, isBinary})
        if (!read(*again, write(*field, isWrittenBinary))) std::abort();
      if (!again->isSame(*field) || write(*again, isBinary) != write(*field, isBinary)) std::abort();
    }
    return 0;
  }
};

#endif
