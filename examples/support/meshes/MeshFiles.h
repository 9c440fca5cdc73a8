#ifndef GALLERY_MESHFILES_H
#define GALLERY_MESHFILES_H

#include <string>
#include <vector>

#include "Gallery.h"

class SoNode;

// The data sets as mesh nodes or curves, a file each, for the scenes of the gallery. What a scene can't do itself
// happens here: cutting sections and windows out of a set, or changing its coordinates.
namespace gallery {

// To where write() writes; made if it isn't there.
void setMeshFolder(const std::string& folder);

// Writes `mesh`, a new node, to the file `<name>.iv`.
void writeMesh(const std::string& name, SoNode* mesh);

inline int sizeOf(const std::vector<float>& numbers) { return static_cast<int>(numbers.size()); }

constexpr float kRadiansPerDegree = 0.0174532925f;

// The subjects, each with all its meshes.
void writeTerrain();
void writeAtmosphere();
void writeOcean();
void writeLand();
void writeCarbonDioxide();
void writeUnstructured();

}  // namespace gallery

#endif
