#ifndef ORMELLE_TESTS_IMPORTFOREIGNSAMPLES_H
#define ORMELLE_TESTS_IMPORTFOREIGNSAMPLES_H

#include <string>
#include <utility>
#include <vector>

/// A hexahedron (nodes 1 to 8, the unit cube) with a pyramid on it (apex 20, at height 2) and the quadrangle below it,
/// in the physical groups 7 "body" and 1 "skin of it". Sets: "heat at nodes" is the number of the node and missing at
/// node 20; "flow" is (number, 0, 1); "stress" is 10 and 20 in the solids; "corner values" has 1 to 8 in the hexahedron
/// and 2, 4, 6, 8, 10 in the pyramid.
std::string sampleGmsh(bool isVersion4, bool isBinary);

/// A grid of lon (10, 20, 30, 50), lat (-5, 0, 5), lev (1000, 500 hPa) and two times (6 and 12 hours since 2000-01-01).
/// "air temperature (K)" is packed: 273.15 + 0.01 (100 t + 24 z + 4 y + x), missing at x = 1, y = 2, z = 0; wind has
/// the components u = x and v = y; "orog" is 10 x + y, NaN missing; "index" has one number for each time.
std::string sampleNetcdf();
/// A gauge at one place, at four times (from 2000-02-28 12:00: after 24, 48 and 54 hours): a packed water level of 6.5,
/// a gap, 4.75 and 5 m, and a pressure of 1013, 1009.5, 998 hPa and one that isn't valid, a flow of 10 to 13 m3/s at
/// the site "north" and of 20 to 23 at "quay"; beside them "gain" over a band.
std::string sampleNetcdfSeries();

/// Two triangles of a square, with normals, colours, a quality of vertices and a label of faces.
std::string samplePly(const std::string& format);
/// A pyramid: a square base in a group of its own, four sides, colours of vertices and a line.
std::string sampleObj();
/// A square in two facets.
std::string sampleStl(bool isBinary);

/// Names with all that can be read by the libraries that the tool was built with.
std::vector<std::pair<std::string, std::string>> foreignSamples();

/// Days with decimal commas and gaps; counts of people by class and sex; depths on a grid of which one node is missing.
/// @{
std::string sampleSeriesCsv();
std::string sampleTableCsv();
std::string sampleGridCsv();
/// @}

#endif
