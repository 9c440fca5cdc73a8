#include "quillane/rep/PiMeshBuffers.h"

SbVec3f* PiMeshBuffers::vectors(int count) {
  if (count < 1) return nullptr;
  if (count > m_vectorCapacity) {
    m_vectors = std::make_unique<SbVec3f[]>(static_cast<std::size_t>(count));
    m_vectorCapacity = count;
  }
  return m_vectors.get();
}

std::size_t PiMeshBuffers::memorySize() const {
  return isovalues.getIsovalues().size() * sizeof(float) +
         (coordIndices.capacity() + cellIndices.capacity()) * sizeof(std::int32_t) +
         static_cast<std::size_t>(m_vectorCapacity) * sizeof(SbVec3f);
}
