#ifndef ORMELLE_PIVECTORFIELD_H
#define ORMELLE_PIVECTORFIELD_H

#include <cstddef>
#include <vector>

#include <Inventor/SbVec3f.h>

/// The vectors of a field that are drawn, and from where to where.
class PiVectorField {
 public:
  struct Selection {
    int density = 1;  ///< one of so many; below 1 counts as 1
    bool hasMin = false;
    bool hasMax = false;
    float minLength = 0;  ///< of the module; the bounds themselves are inside
    float maxLength = 0;
    bool isConstantLength = false;
    float lengthFactor = 1;  ///< of the module, or the length itself
  };

  struct Vector {
    SbVec3f start;
    SbVec3f along;  ///< to the end point
    float module;
    int index;  ///< among all that were added
  };

  /// Forgets all vectors, and keeps the memory.
  void start(const Selection& selection);

  /// The next vector. Every one counts for the density, even if it is left out for its module or because it isn't
  /// finite.
  void add(const SbVec3f& point, const SbVec3f& vector);

  const std::vector<Vector>& vectors() const { return m_vectors; }
  std::size_t capacityInBytes() const { return m_vectors.capacity() * sizeof(Vector); }

 private:
  Selection m_selection;
  int m_count = 0;
  int m_next = 0;
  std::vector<Vector> m_vectors;
};

#endif
