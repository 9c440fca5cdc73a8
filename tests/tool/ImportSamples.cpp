#include "ImportSamples.h"

#include <zlib.h>

#include <array>
#include <cstdint>
#include <cstring>
#include <sstream>

#include "ImportForeignSamples.h"

namespace {

template <class Number>
std::string joined(const std::vector<Number>& numbers) {
  std::ostringstream text;
  for (const Number number : numbers) text << +number << ' ';
  return text.str();
}

template <class Number>
std::string bytesOf(const std::vector<Number>& numbers) {
  std::string bytes(numbers.size() * sizeof(Number), '\0');
  std::memcpy(bytes.data(), numbers.data(), bytes.size());
  return bytes;
}

// As legacy files have them: highest byte first.
template <class Number>
std::string reversedBytesOf(const std::vector<Number>& numbers) {
  std::string bytes;
  for (const Number number : numbers) {
    std::array<char, sizeof(Number)> own{};
    std::memcpy(own.data(), &number, own.size());
    bytes.append(own.rbegin(), own.rend());
  }
  return bytes;
}

std::string base64(const std::string& bytes) {
  constexpr const char* digits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  std::string text;
  for (std::size_t i = 0; i < bytes.size(); i += 3) {
    std::uint32_t group = 0;
    for (std::size_t k = 0; k < 3; ++k)
      group = group << 8 | (i + k < bytes.size() ? static_cast<unsigned char>(bytes[i + k]) : 0U);
    for (std::size_t k = 0; k < 4; ++k) text += i + k > bytes.size() ? '=' : digits[group >> (18 - 6 * k) & 63];
  }
  return text;
}

// How the numbers of an XML file are written.
enum class Form { TEXT, BASE64, PACKED, APPENDED };

template <class Number>
const char* typeName() {
  if constexpr (std::is_same_v<Number, float>) return "Float32";
  if constexpr (std::is_same_v<Number, double>) return "Float64";
  if constexpr (std::is_same_v<Number, std::int64_t>) return "Int64";
  if constexpr (std::is_same_v<Number, std::int32_t>) return "Int32";
  return "UInt8";
}

class XmlWriter {
 public:
  explicit XmlWriter(Form form) : m_form(form) {}

  template <class Number>
  void array(const std::string& name, const std::vector<Number>& numbers, int components = 1) {
    m_text << "<DataArray type=\"" << typeName<Number>() << "\" Name=\"" << name << "\" NumberOfComponents=\""
           << components << "\" format=\"";
    const std::string bytes = bytesOf(numbers);
    const auto size = static_cast<std::uint32_t>(bytes.size());
    if (m_form == Form::TEXT) {
      m_text << "ascii\">" << joined(numbers);
    } else if (m_form == Form::BASE64) {
      m_text << "binary\">" << base64(bytesOf<std::uint32_t>({size}) + bytes);
    } else if (m_form == Form::PACKED) {
      uLongf packedSize = compressBound(size);
      std::string packed(packedSize, '\0');
      compress(reinterpret_cast<Bytef*>(packed.data()), &packedSize, reinterpret_cast<const Bytef*>(bytes.data()),
               size);
      packed.resize(packedSize);
      m_text << "binary\">" << base64(bytesOf<std::uint32_t>({1, size, 0, static_cast<std::uint32_t>(packedSize)}))
             << base64(packed);
    } else {
      m_text << "appended\" offset=\"" << m_appended.size() << "\">";
      m_appended += bytesOf<std::uint32_t>({size}) + bytes;
    }
    m_text << "</DataArray>\n";
  }
  void text(const std::string& text) { m_text << text; }

  std::string file(const std::string& type) const {
    std::string file = "<?xml version=\"1.0\"?>\n<VTKFile type=\"" + type +
                       "\" version=\"0.1\" byte_order=\"LittleEndian\"" +
                       (m_form == Form::PACKED ? " compressor=\"vtkZLibDataCompressor\"" : "") + ">\n" + m_text.str();
    if (!m_appended.empty()) file += "<AppendedData encoding=\"raw\">\n_" + m_appended + "\n</AppendedData>\n";
    return file + "</VTKFile>\n";
  }

 private:
  Form m_form;
  std::ostringstream m_text;
  std::string m_appended;
};

// ---- The grid -------------------------------------------------------------------------------------------------------

struct Grid {
  std::vector<float> x{1, 1.5, 2}, y{2, 3}, z{3, 5};
  std::vector<float> sums, flow, points;
  std::vector<float> cells{0, 1};

  Grid() {
    for (std::size_t k = 0; k < z.size(); ++k)
      for (std::size_t j = 0; j < y.size(); ++j)
        for (std::size_t i = 0; i < x.size(); ++i) {
          sums.push_back(static_cast<float>(i + 10 * j + 100 * k));
          for (const std::size_t index : {i, j, k}) flow.push_back(static_cast<float>(index));
          points.insert(points.end(), {x[i], y[j], z[k]});
        }
  }
};

std::string gridXml(const std::string& type, Form form) {
  const Grid grid;
  XmlWriter xml(form);
  xml.text("<" + type + " WholeExtent=\"0 2 0 1 0 1\"" +
           (type == "ImageData" ? " Origin=\"1 2 3\" Spacing=\"0.5 1 2\"" : "") +
           ">\n<Piece Extent=\"0 2 0 1 0 1\">\n<PointData>\n");
  xml.array("sum of indices", grid.sums);
  xml.array("flow", grid.flow, 3);
  xml.text("</PointData>\n<CellData>\n");
  xml.array("cell number", grid.cells);
  xml.text("</CellData>\n");
  if (type == "RectilinearGrid") {
    xml.text("<Coordinates>\n");
    xml.array("x", grid.x);
    xml.array("y", grid.y);
    xml.array("z", grid.z);
    xml.text("</Coordinates>\n");
  } else if (type == "StructuredGrid") {
    xml.text("<Points>\n");
    xml.array("Points", grid.points, 3);
    xml.text("</Points>\n");
  }
  xml.text("</Piece>\n</" + type + ">\n");
  return xml.file(type);
}

// ---- Cells of all kinds ---------------------------------------------------------------------------------------------

std::string cellsXml(Form form) {
  XmlWriter xml(form);
  // A cube, a pyramid on it, a wedge beside it, a tetrahedron beside that; a quadrangle and a triangle below.
  const std::vector<double> points{0, 0, 0, 1, 0, 0, 1, 1, 0, 0, 1,   0,   0, 0, 1, 1, 0, 1, 1, 1,
                                   1, 0, 1, 1, 2, 0, 0, 2, 0, 1, 0.5, 0.5, 2, 3, 0, 0, 2, 1, 0};
  const std::vector<std::int64_t> nodes{0, 1, 2, 3, 4, 5,  6,  7, 4, 5, 6, 7, 10, 1, 8,
                                        2, 5, 9, 6, 8, 11, 12, 9, 0, 1, 2, 3, 1,  8, 2};
  const std::vector<std::int64_t> ends{8, 13, 19, 23, 27, 30};
  std::vector<float> heat, moved;
  for (std::size_t i = 0; i < points.size() / 3; ++i) {
    heat.push_back(static_cast<float>(i) / 2);
    moved.insert(moved.end(), {static_cast<float>(i), 0, -1});
  }
  xml.text(
      "<UnstructuredGrid>\n<Piece NumberOfPoints=\"13\" NumberOfCells=\"6\">\n<PointData Scalars=\"heat in K\">\n");
  xml.array("moved", moved, 3);
  xml.array("heat in K", heat);
  xml.text("</PointData>\n<CellData>\n");
  xml.array<std::int32_t>("material", {10, 20, 30, 40, 50, 60});
  xml.text("</CellData>\n<Points>\n");
  xml.array("Points", points, 3);
  xml.text("</Points>\n<Cells>\n");
  xml.array("connectivity", nodes);
  xml.array("offsets", ends);
  xml.array<std::uint8_t>("types", {12, 14, 13, 10, 9, 5});
  xml.text("</Cells>\n</Piece>\n</UnstructuredGrid>\n");
  return xml.file("UnstructuredGrid");
}

// A concave polygon with five corners, a strip of two triangles, and a line.
std::string surfaceXml() {
  XmlWriter xml(Form::TEXT);
  xml.text(
      "<PolyData>\n<Piece NumberOfPoints=\"9\" NumberOfVerts=\"0\" NumberOfLines=\"1\" NumberOfStrips=\"1\" "
      "NumberOfPolys=\"1\">\n<PointData>\n");
  xml.array<float>("depth", {0, 1, 2, 3, 4, 5, 6, 7, 8});
  xml.text("</PointData>\n<CellData>\n");
  xml.array<float>("kind", {1, 2, 3});  // line, polygon, strip
  xml.text("</CellData>\n<Points>\n");
  xml.array<float>("Points", {0, 0, 0, 4, 0, 0, 4, 4, 0, 2, 1, 0, 0, 4, 0, 5, 0, 0, 5, 1, 0, 6, 0, 0, 6, 1, 0}, 3);
  xml.text("</Points>\n<Lines>\n");
  xml.array<std::int32_t>("connectivity", {0, 8});
  xml.array<std::int32_t>("offsets", {2});
  xml.text("</Lines>\n<Strips>\n");
  xml.array<std::int32_t>("connectivity", {5, 7, 6, 8});
  xml.array<std::int32_t>("offsets", {4});
  xml.text("</Strips>\n<Polys>\n");
  xml.array<std::int32_t>("connectivity", {0, 1, 2, 3, 4});
  xml.array<std::int32_t>("offsets", {5});
  xml.text("</Polys>\n</Piece>\n</PolyData>\n");
  return xml.file("PolyData");
}

std::string cellsLegacy() {
  return "# vtk DataFile Version 3.0\ntwo tetrahedra and a curved triangle\nASCII\nDATASET UNSTRUCTURED_GRID\n"
         "POINTS 8 double\n0 0 0 1 0 0 0 1 0 0 0 1 1 1 1 2 0 0 2 1 0 2.5 0.5 0\n"
         "CELLS 3 17\n4 0 1 2 3\n4 1 2 3 4\n6 1 5 6 4 7 2\nCELL_TYPES 3\n10\n10\n22\n"
         "POINT_DATA 8\nSCALARS pressure float 1\nLOOKUP_TABLE default\n0 1 2 3 4 5 6 7\n"
         "VECTORS speed float\n1 0 0 1 0 0 1 0 0 1 0 0 1 0 0 1 0 0 1 0 0 1 0 0\n"
         "CELL_DATA 3\nFIELD results 2\nstress 6 3 float\n1 2 3 4 5 6 1 2 3 4 5 6 1 2 3 4 5 6\n"
         "zone%20number 1 3 int\n7 8 9\n";
}

}  // namespace

std::string sampleGridXml(const std::string& type) { return gridXml(type, Form::TEXT); }

std::string sampleGridLegacy(bool isBinary) {
  const Grid grid;
  const auto numbers = [&](const std::vector<float>& all) {
    return (isBinary ? reversedBytesOf(all) : joined(all)) + "\n";
  };
  return std::string("# vtk DataFile Version 3.0\na grid\n") + (isBinary ? "BINARY" : "ASCII") +
         "\nDATASET STRUCTURED_POINTS\nDIMENSIONS 3 2 2\nORIGIN 1 2 3\nSPACING 0.5 1 2\nPOINT_DATA 12\n"
         "SCALARS sum%20of%20indices float 1\nLOOKUP_TABLE default\n" +
         numbers(grid.sums) + "VECTORS flow float\n" + numbers(grid.flow) +
         "CELL_DATA 2\nSCALARS cell%20number float 1\nLOOKUP_TABLE default\n" + numbers(grid.cells);
}

std::vector<ImportSample> importSamples() {
  std::vector<ImportSample> samples{
      {"legacy_grid.vtk", sampleGridLegacy(false), true},
      {"legacy_grid_binary.vtk", sampleGridLegacy(true), true},
      {"legacy_cells.vtk", cellsLegacy(), true},
      {"cells.vtu", cellsXml(Form::TEXT), true},
      {"cells_base64.vtu", cellsXml(Form::BASE64), true},
      {"cells_packed.vtu", cellsXml(Form::PACKED), true},
      {"cells_appended.vtu", cellsXml(Form::APPENDED), true},
      {"surface.vtp", surfaceXml(), true},
      {"grid.vti", gridXml("ImageData", Form::APPENDED), true},
      {"grid.vtr", gridXml("RectilinearGrid", Form::BASE64), true},
      {"grid.vts", gridXml("StructuredGrid", Form::PACKED), true},
  };
  for (const auto& [name, bytes] : foreignSamples()) samples.push_back({name, bytes, false});
  return samples;
}
