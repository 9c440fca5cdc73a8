#ifndef ORMELLE_BENCH_WORKLOADS_H
#define ORMELLE_BENCH_WORKLOADS_H

/// @file
/// Inputs of the benchmarks, each given by a formula, so that another library can be measured on the same bits. All is
/// computed in double and rounded to float once. `hash` of an array tells whether it is the one meant; the hashes that
/// stand beside the functions hold for compilers that don't contract products and sums.

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <numbers>
#include <vector>

namespace Workloads {

constexpr double kPi = std::numbers::pi;

/// FNV-1a over the bytes of an array, which may be continued from the hash of another.
template <class T>
std::uint64_t hash(const std::vector<T>& values, std::uint64_t start = 14695981039346656037ULL) {
  const auto* bytes = reinterpret_cast<const unsigned char*>(values.data());
  for (std::size_t b = 0; b < values.size() * sizeof(T); ++b) start = (start ^ bytes[b]) * 1099511628211ULL;
  return start;
}

/// Random numbers in [0, 1) of a 64-bit linear congruential generator.
class Random {
 public:
  double next() {
    m_state = m_state * 6364136223846793005ULL + 1442695040888963407ULL;
    return static_cast<double>(m_state >> 11) * 0x1p-53;
  }

 private:
  std::uint64_t m_state = 12345;
};

/// Node `i` of `num` on [min, max].
inline double coordinate(int i, int num, double min, double max) {
  return min + (max - min) * (static_cast<double>(i) / (num - 1));
}

/// A value as float; what should be 0, and hangs on the last bits of sines, becomes 0.
inline float rounded(double value) { return std::fabs(value) < 1e-9 ? 0.0F : static_cast<float>(value); }

using Field = double (*)(double x, double y, double z);

/// A periodic surface without planes; every level is rich in sheets.
inline double gyroid(double x, double y, double z) {
  const double a = 4 * kPi;
  return std::sin(a * x) * std::cos(a * y) + std::sin(a * y) * std::cos(a * z) + std::sin(a * z) * std::cos(a * x);
}

/// The test signal of Marschner and Lobb, "An evaluation of reconstruction filters for volume rendering" (1994).
inline double marschnerLobb(double x, double y, double z) {
  const double frequency = 6, alpha = 0.25, r = std::sqrt(x * x + y * y);
  const double rho = std::cos(2 * kPi * frequency * std::cos(kPi * r / 2));
  return (1 - std::sin(kPi * z / 2) + alpha * (1 + rho)) / (2 * (1 + alpha));
}

/// Values at the nodes of num^3 regular nodes on [-1, 1]^3, the last index fastest.
inline std::vector<float> regularValues(int num, Field field) {
  std::vector<float> values;
  values.reserve(static_cast<std::size_t>(num) * num * num);
  for (int i = 0; i < num; ++i)
    for (int j = 0; j < num; ++j)
      for (int k = 0; k < num; ++k)
        values.push_back(
            rounded(field(coordinate(i, num, -1, 1), coordinate(j, num, -1, 1), coordinate(k, num, -1, 1))));
  return values;
}

/// The nodes of a cube [-1, 1]^3 of cells^3 hexahedra, bent inside: the outer faces stay plane.
struct WarpedCube {
  int num;  ///< nodes along each axis
  std::vector<float> x, y, z;
  std::vector<float> values;  ///< of a field at the nodes

  /// Hash of the coordinates, x y z of node after node: 9bb03703b2d39f3d for 50, d4ae9b217ebf556d for 100.
  std::uint64_t hashOfNodes() const {
    std::vector<float> nodes;
    for (std::size_t n = 0; n < x.size(); ++n) nodes.insert(nodes.end(), {x[n], y[n], z[n]});
    return hash(nodes);
  }
  int node(int i, int j, int k) const { return (i * num + j) * num + k; }
  /// Calls `use(corners)` for each hexahedron, the last index fastest, with the eight nodes in cell order.
  template <class Use>
  void forEachHexahedron(Use&& use) const {
    for (int i = 0; i + 1 < num; ++i)
      for (int j = 0; j + 1 < num; ++j)
        for (int k = 0; k + 1 < num; ++k) {
          const int corners[8] = {
              node(i, j, k),     node(i + 1, j, k),     node(i + 1, j + 1, k),     node(i, j + 1, k),
              node(i, j, k + 1), node(i + 1, j, k + 1), node(i + 1, j + 1, k + 1), node(i, j + 1, k + 1)};
          use(corners, (i + j + k) % 2 == 0);
        }
  }
};

inline WarpedCube warpedCube(int cells, Field field) {
  WarpedCube cube;
  const int num = cube.num = cells + 1;
  for (int i = 0; i < num; ++i)
    for (int j = 0; j < num; ++j)
      for (int k = 0; k < num; ++k) {
        const double x = coordinate(i, num, -1, 1), y = coordinate(j, num, -1, 1), z = coordinate(k, num, -1, 1);
        const double bentX = x + 0.06 * std::sin(kPi * x) * std::cos(kPi * y);
        const double bentY = y + 0.06 * std::sin(kPi * y) * std::cos(kPi * z);
        const double bentZ = z + 0.06 * std::sin(kPi * z) * std::cos(kPi * x);
        cube.x.push_back(static_cast<float>(bentX));
        cube.y.push_back(static_cast<float>(bentY));
        cube.z.push_back(static_cast<float>(bentZ));
        cube.values.push_back(rounded(field(bentX, bentY, bentZ)));
      }
  return cube;
}

/// Eight nodes a cell: f8235e7c0b966179 for 50, 4e0ab9a59d9a56be for 100.
inline std::vector<std::int32_t> hexahedra(const WarpedCube& cube) {
  std::vector<std::int32_t> cells;
  cube.forEachHexahedron([&](const int(&corners)[8], bool) { cells.insert(cells.end(), corners, corners + 8); });
  return cells;
}

/// Each hexahedron as five tetrahedra that fit those of its neighbours: 9b175a2c56a76b71 for 50, c79a87e2c708b9be for
/// 100.
inline std::vector<std::int32_t> tetrahedra(const WarpedCube& cube) {
  static constexpr int kEven[20] = {0, 1, 3, 4, 2, 3, 1, 6, 5, 4, 6, 1, 7, 6, 4, 3, 1, 3, 4, 6};
  static constexpr int kOdd[20] = {1, 2, 0, 5, 3, 0, 2, 7, 4, 7, 5, 0, 6, 5, 7, 2, 0, 2, 7, 5};
  std::vector<std::int32_t> cells;
  cube.forEachHexahedron([&](const int(&corners)[8], bool isEven) {
    for (const int corner : isEven ? kEven : kOdd) cells.push_back(corners[corner]);
  });
  return cells;
}

/// The mean of the values at the corners of each cell: 8ca95823a9a2da55 for the gyroid in 50^3 hexahedra,
/// 1c9a1b04f05214ad in 100^3.
inline std::vector<float> cellMeans(const WarpedCube& cube, const std::vector<std::int32_t>& cells, int nodesPerCell) {
  std::vector<float> means;
  for (std::size_t first = 0; first < cells.size(); first += static_cast<std::size_t>(nodesPerCell)) {
    double sum = 0;
    for (int n = 0; n < nodesPerCell; ++n)
      sum += cube.values[static_cast<std::size_t>(cells[first + static_cast<std::size_t>(n)])];
    means.push_back(static_cast<float>(sum / nodesPerCell));
  }
  return means;
}

/// Points in [-1, 1]^3, x y z of point after point: bb0d644892d2c599 for a million.
inline std::vector<float> randomPoints(int num) {
  Random random;
  std::vector<float> points;
  for (int c = 0; c < 3 * num; ++c) points.push_back(static_cast<float>(-1 + 2 * random.next()));
  return points;
}

/// A hilly function with a ripple, between -8 and 10.
inline double peaks(double x, double y) {
  const double x2 = x * x, y2 = y * y;
  return 3 * (1 - x) * (1 - x) * std::exp(-x2 - (y + 1) * (y + 1)) -
         10 * (x / 5 - x2 * x - y2 * y2 * y) * std::exp(-x2 - y2) - 1.0 / 3 * std::exp(-(x + 1) * (x + 1) - y2) +
         0.25 * std::sin(40 * x) * std::cos(43 * y);
}

/// num^2 nodes of the square [-3, 3]^2, the second index fastest, with the values of `peaks`. `isBent` moves the nodes
/// inside.
struct Square {
  int num;
  std::vector<float> x, y, values;
};
inline Square square(int num, bool isBent) {
  Square result{num, {}, {}, {}};
  for (int i = 0; i < num; ++i)
    for (int j = 0; j < num; ++j) {
      const double x0 = coordinate(i, num, -3, 3), y0 = coordinate(j, num, -3, 3);
      double x = x0, y = y0;
      if (isBent) {
        x = x0 + 0.18 * std::sin(kPi * x0 / 3) * std::cos(kPi * y0 / 3);
        y = y0 + 0.18 * std::sin(kPi * y0 / 3) * std::cos(kPi * x0 / 3);
      }
      result.x.push_back(static_cast<float>(x));
      result.y.push_back(static_cast<float>(y));
      result.values.push_back(rounded(peaks(x, y)));
    }
  return result;
}

/// Two triangles a square, the diagonal changing from one to the next: 622e7d498ad8b900 for 354, 2a0d320d8e9589f5 for
/// 1001.
inline std::vector<std::int32_t> triangles(const Square& square) {
  std::vector<std::int32_t> cells;
  for (int i = 0; i + 1 < square.num; ++i)
    for (int j = 0; j + 1 < square.num; ++j) {
      const std::int32_t a = i * square.num + j, b = a + square.num, c = b + 1, d = a + 1;
      if ((i + j) % 2 == 0)
        cells.insert(cells.end(), {a, b, c, a, c, d});
      else
        cells.insert(cells.end(), {a, b, d, b, c, d});
    }
  return cells;
}

/// Levels of `num` isolines, and edges of `num` bands that cover all values.
inline std::vector<float> lineLevels(int num) {
  std::vector<float> levels;
  for (int m = 0; m < num; ++m) levels.push_back(static_cast<float>(-6 + 13.5 * (m + 0.5) / num));
  return levels;
}
inline std::vector<float> bandEdges(int num) {
  std::vector<float> edges;
  for (int m = 0; m <= num; ++m) edges.push_back(static_cast<float>(-8 + 18.0 * m / num));
  return edges;
}

/// The flow A sin z + C cos y, B sin x + A cos z, C sin y + B cos x of Arnold, Beltrami and Childress.
struct Velocity {
  double x, y, z;
};
inline Velocity abcFlow(double x, double y, double z) {
  const double a = std::sqrt(3.0), b = std::sqrt(2.0), c = 1;
  return {a * std::sin(z) + c * std::cos(y), b * std::sin(x) + a * std::cos(z), c * std::sin(y) + b * std::cos(x)};
}

/// Nodes in [0, 2 pi]^3 and the flow there, x y z of node after node. Hashes of a mesh of 64^3 cells: nodes
/// 7f28565504b3ba64 and flow 49c164fa468b080b if regular, 27f6ed52012fe720 and 43c7f5fa873f1d50 if bent.
struct FlowCube {
  int num;  ///< nodes along each axis
  std::vector<float> x, y, z;
  std::vector<float> velocities;
};
inline FlowCube flowCube(int num, bool isBent) {
  FlowCube cube;
  cube.num = num;
  for (int i = 0; i < num; ++i)
    for (int j = 0; j < num; ++j)
      for (int k = 0; k < num; ++k) {
        double x = coordinate(i, num, -1, 1), y = coordinate(j, num, -1, 1), z = coordinate(k, num, -1, 1);
        if (isBent) {
          const double bentX = x + 0.06 * std::sin(kPi * x) * std::cos(kPi * y);
          const double bentY = y + 0.06 * std::sin(kPi * y) * std::cos(kPi * z);
          const double bentZ = z + 0.06 * std::sin(kPi * z) * std::cos(kPi * x);
          x = bentX, y = bentY, z = bentZ;
        }
        x = kPi * (1 + x), y = kPi * (1 + y), z = kPi * (1 + z);
        cube.x.push_back(static_cast<float>(x));
        cube.y.push_back(static_cast<float>(y));
        cube.z.push_back(static_cast<float>(z));
        const Velocity v = abcFlow(x, y, z);
        for (const double component : {v.x, v.y, v.z}) cube.velocities.push_back(static_cast<float>(component));
      }
  return cube;
}

/// Start points of stream lines, x y z of point after point; 4aec2683aa95a539 for 1000.
inline std::vector<float> streamSeeds(int num) {
  Random random;
  std::vector<float> seeds;
  for (int i = 0; i < 3 * num; ++i) seeds.push_back(static_cast<float>(2 * kPi * (0.05 + 0.9 * random.next())));
  return seeds;
}

/// Goes along the exact flow for a length, in `numSteps` steps of the fourth order.
inline void followFlow(double (&p)[3], double length, int numSteps) {
  const double h = length / numSteps, at[4] = {0, 0.5, 0.5, 1};
  for (int step = 0; step < numSteps; ++step) {
    double slopes[4][3];
    for (int e = 0; e < 4; ++e) {
      double q[3];
      for (int c = 0; c < 3; ++c) q[c] = p[c] + (e > 0 ? at[e] * h * slopes[e - 1][c] : 0);
      const Velocity v = abcFlow(q[0], q[1], q[2]);
      const double speed = std::sqrt(v.x * v.x + v.y * v.y + v.z * v.z);
      slopes[e][0] = v.x / speed, slopes[e][1] = v.y / speed, slopes[e][2] = v.z / speed;
    }
    for (int c = 0; c < 3; ++c) p[c] += h / 6 * (slopes[0][c] + 2 * slopes[1][c] + 2 * slopes[2][c] + slopes[3][c]);
  }
}

}  // namespace Workloads

#endif
