#ifndef ORMELLE_PIMESHNODES_H
#define ORMELLE_PIMESHNODES_H

class SoCoordinate3;
class SoGroup;
class SoMaterial;
class SoMaterialBinding;
class SoNormal;
class SoNormalBinding;
class SoShapeHints;
class SoTexture2;
class SoTextureCoordinate2;
class SoTextureCoordinateBinding;

/// The nodes that one rebuild of a mesh kit makes. `group` owns what stands in it; the kit hands `group`, `material`
/// and `texture` to its parts, which own them from then on.
struct PiMeshNodes {
  SoCoordinate3* coordinate = nullptr;
  SoMaterial* material = nullptr;
  SoMaterialBinding* materialBinding = nullptr;
  SoNormal* normal = nullptr;
  SoNormalBinding* normalBinding = nullptr;
  SoTextureCoordinate2* textureCoordinate = nullptr;
  SoTextureCoordinateBinding* textureCoordinateBinding = nullptr;
  SoTexture2* texture = nullptr;
  SoGroup* group = nullptr;
  SoShapeHints* shapeHints = nullptr;
  SoNormal* overallNormal = nullptr;
};

#endif
