#ifndef ORMELLE_POSFMESH_H
#define ORMELLE_POSFMESH_H

#include <Inventor/fields/SoSField.h>
#include <Ormelle/OrmelleExport.h>

class PbMesh;
class SoInput;
class SoOutput;

/// Root of the fields that hold a mesh, one class for each class of meshes; the mesh nodes have one such field.
///
/// A field owns its mesh, which is there from the field's start to its end: a new value, one read from a file or one
/// that comes over a connection is copied into it, and the kits connected to it are told. Fields of one class can be
/// connected; each keeps a mesh of its own.
///
/// @par As text
/// First the geometry, then the data sets, one number or block of numbers after the other, with comments that say what
/// is what:
/// @code
/// mesh
///   2 3   # num_x, num_y
///   0 0   # x_min, y_min
///   1 2   # x_max, y_max
///   0   # 2D mesh
///   0   # number of string data-set
///   1   # number of scalar data-set
///   0   # number of vector data-set
///   # set of scalars, index 0, binding per cell
///   "Heat"   # set name
///   1.5 2.5
/// @endcode
/// A comment with "per cell" in front of the name of a set of values or vectors makes it one with one element for each
/// cell; and the first count is that of the string sets only if its comment says so, since an older form has no string
/// sets and starts with the number of scalar sets. All other comments are free. Numbers don't depend on the locale, may
/// be `nan`, `inf` and `-inf`, and are written with 8 digits, or with 9 where a float needs them to be read back the
/// same. In a string a double quote right before a line break, which the toolkit's text form cannot express, is kept
/// apart from it by a space.
///
/// @par In binary
/// The same numbers and strings without the comments. The name of a set with one element for each cell is followed by a
/// zero byte and "per cell" within its string.
///
/// @par What is kept
/// Sets are written by rising index and read back under the indices 0, 1, 2 and so on. A set whose number of elements
/// isn't that of the nodes or cells is left out: one added without data, or one that a borrowing mesh kept when its
/// geometry changed. A mesh that was read copies the arrays it is given, whatever it did before.
///
/// @par Bad input
/// A value that cannot be read, because the file ends, a number doesn't parse, a count is negative or too large for an
/// int, a cell has a number of nodes that its class doesn't know or an index without a node, leaves the mesh as it was;
/// the toolkit then posts its read error. Counts are not trusted: memory grows with what has been read.
class ORMELLE_API PoSFMesh : public SoSField {
 public:
  ~PoSFMesh() override;

  /// Registers the field classes in their fixed order, and takes them away again.
  static void initClasses();
  static void exitClasses();

  static void initClass();
  static void exitClass();
  static SoType getClassTypeId();

  /// The mesh, which belongs to the field, also for changes. From then on the field counts as set and is written, even
  /// if it was never given a value. Kits see changes at once; call `touch` for fields and sensors that watch this one.
  virtual PbMesh* getMesh() = 0;

  SbBool readValue(SoInput* in) override = 0;
  void writeValue(SoOutput* out) const override = 0;

 protected:
  PoSFMesh();

 private:
  static SoType classTypeId;
};

#endif
