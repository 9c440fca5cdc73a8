#ifndef ORMELLE_PBDOMAIN_H
#define ORMELLE_PBDOMAIN_H

#include <Inventor/SbMatrix.h>

#include <Ormelle/PbBase.h>

class SbBox2f;
class SbBox3f;
class SbVec3f;
class SoMatrixTransform;
class SoTransform;

/// The box of user coordinates that a chart or a mesh occupies, and how that box is scaled for display.
///
/// A chart with X in thousands and Y in millionths would make a scene that can't be seen at once; the transform of its
/// domain brings the axes to comparable lengths. A domain starts as the unit box with `SCALE_X_FIXED`.
///
/// A box must have positive finite sides in every direction, after it was made square or cubic too; any other is
/// ignored and leaves the domain as it was.
class ORMELLE_API PbDomain : public PbBase {
 public:
  enum TransformType {
    TRANSFORM_01 = 0,        ///< the box becomes the unit cube
    SCALE_X_FIXED = 1,       ///< Y and Z are scaled so that the box is as long in them as in X
    SCALE_Y_FIXED = 2,       ///< the same by the length in Y
    SCALE_Z_FIXED = 3,       ///< the same by the length in Z
    SCALE_MAX_XYZ_FIXED = 4  ///< by X if it is strictly the longest, else by Y if it is, else by Z
  };
  /// What is done to a box that is given.
  enum BoundingBoxType {
    BOX_AS_GIVEN = 0,      ///< used unchanged
    BOX_LARGEST_SIDE = 1,  ///< made square or cubic about its centre, with its largest side
    BOX_SMALLEST_SIDE = 2  ///< made square or cubic about its centre, with its smallest side
  };

  PbDomain() = default;
  PbDomain(float xmin, float ymin, float xmax, float ymax, BoundingBoxType type);
  PbDomain(float xmin, float ymin, float zmin, float xmax, float ymax, float zmax, BoundingBoxType type);
  PbDomain(const SbBox2f& box, BoundingBoxType type);
  PbDomain(const SbBox3f& box, BoundingBoxType type);
  PbDomain(const PbDomain& other) = default;
  /// Copies box and transform type and announces the change.
  PbDomain& operator=(const PbDomain& other);

  /// Sets the box and announces `OBJECT_CHANGE`. The two-dimensional forms set z to 0..1.
  /// @{
  void setDomain(float xmin, float ymin, float xmax, float ymax, BoundingBoxType type);
  void setDomain(float xmin, float ymin, float zmin, float xmax, float ymax, float zmax, BoundingBoxType type);
  void setDomain(const SbBox2f& box, BoundingBoxType type);
  void setDomain(const SbBox3f& box, BoundingBoxType type);
  /// @}
  void getDomain(float& xmin, float& ymin, float& xmax, float& ymax) const;
  void getDomain(float& xmin, float& ymin, float& zmin, float& xmax, float& ymax, float& zmax) const;
  void getDomain(SbBox2f& box) const;
  void getDomain(SbBox3f& box) const;

  /// Each maximum less its minimum.
  /// @{
  void getDelta(float& deltaX, float& deltaY) const;
  void getDelta(float& deltaX, float& deltaY, float& deltaZ) const;
  float getDeltaX() const { return m_delta[0]; }
  float getDeltaY() const { return m_delta[1]; }
  float getDeltaZ() const { return m_delta[2]; }
  /// @}

  TransformType getTransformType() const { return m_transformType; }
  /// Announces `DOMAIN_TRANSFORM_TYPE_CHANGE`.
  void setTransformType(TransformType type);

  /// Whether the three sides are exactly equal, so that every `SCALE_*` type gives the identity.
  int isHomogeneous() const { return m_delta[0] == m_delta[1] && m_delta[1] == m_delta[2]; }

  /// The transform from user coordinates to the scene's; factors that a float can't hold are kept in its range.
  SbMatrix getMatrix() const;
  /// A new node with the same effect. The caller owns it; its reference count is 0.
  /// @{
  SoTransform* getTransform() const;
  SoMatrixTransform* getMatrixTransform() const;
  /// @}

  /// Compare the box, exactly, and the transform type.
  bool operator==(const PbDomain& other) const;
  bool operator!=(const PbDomain& other) const { return !(*this == other); }

 private:
  bool setBox(int numAxes, const float* min, const float* max, BoundingBoxType type);
  SbVec3f getScale() const;

  float m_min[3] = {0, 0, 0};
  float m_max[3] = {1, 1, 1};
  float m_delta[3] = {1, 1, 1};
  TransformType m_transformType = SCALE_X_FIXED;
};

#endif
