#ifndef ORMELLE_PIMESHBUFFERS_H
#define ORMELLE_PIMESHBUFFERS_H

#include <cstddef>
#include <memory>

#include <Inventor/SbVec3f.h>

#include "graph/data/PiIsovalueAdjustment.h"
#include "quillane/emit/PiIndexList.h"

/// What one kit keeps from rebuild to rebuild so as not to allocate it anew.
class PiMeshBuffers {
 public:
  PiIndexList coordIndices;
  PiIndexList cellIndices;
  PiIsovalueAdjustment isovalues;

  /// At least `count` vectors, uninitialised.
  SbVec3f* vectors(int count);

  std::size_t memorySize() const;

 private:
  std::unique_ptr<SbVec3f[]> m_vectors;
  int m_vectorCapacity = 0;
};

#endif
