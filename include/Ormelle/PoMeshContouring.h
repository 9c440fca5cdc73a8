#ifndef ORMELLE_POMESHCONTOURING_H
#define ORMELLE_POMESHCONTOURING_H

#include <Inventor/fields/SoMFVec2f.h>
#include <Inventor/fields/SoSFUShort.h>

#include <memory>

#include <Ormelle/PoMesh2D.h>

class PbMiscTextAttr;
class PbNumericDisplayFormat;
struct PiIsolineNodes;
struct PiIsolineStyle;

/// Draws the isolines of a set of values on a two-dimensional mesh, divided into major and minor lines, with numbers on
/// the major ones if asked for.
///
/// It reads the mesh, the isovalues, for colours the data mapping, and for labels the number format, the text
/// attributes and the domain, each set on the kit or found on the traversal state. The set of values is `valuesIndex`,
/// with one value for each node. Under any colouring but `COLOR_INHERITED` a line has the colour of its isovalue; one
/// without a colour, or with a transparency that reaches PbDataMapping::getTransparencyValueDeletedParts(), isn't
/// drawn.
///
/// A label lies with its middle on its line. It touches neither the boundary of the mesh, nor another label, nor, as
/// `annotCrossStatus` says, another line; a line that has no such place for it stays without. Labels are fitted as the
/// domain shows the lines: where the sides of the domain are not equally long, all generated parts are made in the
/// space of the domain, and the part `transform` takes them back. Lengths of labels are relative to a reference: the
/// greater side of `annotClippingPolygon`, or without it the length at which the domain shows its sides (its length in
/// x if they are equal). So give a domain that fits the mesh; the default one is 1 long.
///
/// On a mesh with heights a label rises with its line, is tilted across as the surface is, and lies just above it.
///
/// Styles are the application's: `majorContourLineApp` and its like are its appearance kits, of which
/// `annotTextApp` and `annotBackgroundApp` start with the light model `BASE_COLOR`.
///
/// @code
/// PoMeshContouring* lines = new PoMeshContouring;
/// lines->setMesh(&grid);
/// lines->setIsovaluesList(&levels);
/// lines->setDomain(&domain);
/// lines->valuesIndex = 0;
/// lines->annotIsVisible = TRUE;
/// lines->annotIsContourClip = TRUE;
/// lines->set("majorContourLineApp.drawStyle", "lineWidth 2");
/// @endcode
///
/// Catalog, behind the parts of PoBase; each group stands with its appearance in a separator of its own:
/// @code
/// alternateRep
///   transform                SoMatrixTransform  back from the space of the domain
///   majorContourLineSep      SoSeparator
///     majorContourLineApp    SoAppearanceKit
///     majorContourLine       SoGroup            colours, coordinates, a SoLineSet
///   minorContourLineSep ...                     the same
///   annotBackgroundSep ...   annotBackground    SoGroup   coordinates, a SoFaceSet: a box behind each label
///   annotBackgroundBorderSep ... annotBackgroundBorder  SoGroup  coordinates, a SoLineSet: its four sides
///   annotTextSep ...         annotText          SoGroup   the texts
/// @endcode
class ORMELLE_API PoMeshContouring : public PoMesh2D {
  PO_KIT_HEADER(PoMeshContouring, PoMesh2D);
  PO_KIT_CATALOG_ENTRY_HEADER(transform);
  PO_KIT_CATALOG_ENTRY_HEADER(majorContourLineSep);
  PO_KIT_CATALOG_ENTRY_HEADER(majorContourLineApp);
  PO_KIT_CATALOG_ENTRY_HEADER(majorContourLine);
  PO_KIT_CATALOG_ENTRY_HEADER(minorContourLineSep);
  PO_KIT_CATALOG_ENTRY_HEADER(minorContourLineApp);
  PO_KIT_CATALOG_ENTRY_HEADER(minorContourLine);
  PO_KIT_CATALOG_ENTRY_HEADER(annotBackgroundSep);
  PO_KIT_CATALOG_ENTRY_HEADER(annotBackgroundApp);
  PO_KIT_CATALOG_ENTRY_HEADER(annotBackground);
  PO_KIT_CATALOG_ENTRY_HEADER(annotBackgroundBorderSep);
  PO_KIT_CATALOG_ENTRY_HEADER(annotBackgroundBorderApp);
  PO_KIT_CATALOG_ENTRY_HEADER(annotBackgroundBorder);
  PO_KIT_CATALOG_ENTRY_HEADER(annotTextSep);
  PO_KIT_CATALOG_ENTRY_HEADER(annotTextApp);
  PO_KIT_CATALOG_ENTRY_HEADER(annotText);

 public:
  /// Direction of a label.
  enum AnnotPath {
    TANGENTIAL_PATH = 0,  ///< along its line, never upside down
    HORIZONTAL_PATH = 1,  ///< along x
    VERTICAL_PATH = 2     ///< along y
  };
  /// Which lines besides its own a label may cross or cover.
  enum AnnotCrossStatus {
    CROSS_CONTOUR = 0,        ///< all
    CROSS_MINOR_CONTOUR = 1,  ///< minor lines
    DONT_CROSS_CONTOUR = 2    ///< none
  };

  /// Every n-th isovalue of the list is major; all are with 1 or 0. 3 by default.
  SoSFUShort majorPeriod;
  /// Place in the list, counted from 1, of a major isovalue; 1 by default.
  SoSFUShort firstMajor;
  /// Whether major lines have labels; `FALSE` by default.
  SoSFBool annotIsVisible;
  /// An AnnotPath, `TANGENTIAL_PATH` by default.
  SoSFEnum annotPath;
  /// An AnnotCrossStatus, `CROSS_CONTOUR` by default. With the stricter ones, lines whose isovalue lies beyond an
  /// enabled threshold of the mapping that colours them have no label.
  SoSFEnum annotCrossStatus;
  /// Whether there is a box behind each label; `FALSE` by default.
  SoSFBool annotIsBackground;
  /// Whether lines are cut where a label lies; `FALSE` by default. A box hides the lines anyway: then they stay whole.
  SoSFBool annotIsContourClip;
  /// Distance between labels of a line, along it, relative to the reference; 1 by default.
  SoSFFloat annotGap;
  /// A polygon in x and y, closed by itself and not necessarily convex, that labels stay inside of. Used if it has more
  /// than 2 points; one point (0, 0) by default.
  SoMFVec2f annotClippingPolygon;
  /// Height of text relative to the reference; 0, the default, means 0.04.
  SoSFFloat annotFontSize;
  /// Multiplies the size of text under a projection, of which there is none so far; 1 by default.
  SoSFFloat annotFontFactor;

  PoMeshContouring();

  /// @name How labels are written, instead of what is on the traversal state
  /// Null goes back to the state. Not owned.
  /// @{
  void setFormat(PbNumericDisplayFormat* format);
  void setMiscTextAttr(PbMiscTextAttr* attributes);
  /// @}
  /// What was set, else during a traversal what is on the state, else a default object of the kit.
  /// @{
  const PbNumericDisplayFormat* getFormat() const;
  const PbMiscTextAttr* getMiscTextAttr() const;
  /// @}

  void rebuild() override;

  std::size_t getMemorySize() const override;

 protected:
  ~PoMeshContouring() override;

  void preRebuild() override;
  void addElementsAllCaches() override;
  void copyContents(const SoFieldContainer* from, SbBool copyConnections) override;

 private:
  class Workers;

  void drawContourLines(PbMesh2D& mesh, const float* values);
  void setLabelStyle(PiIsolineStyle& style, float reference) const;
  void setLineParts(const PiIsolineNodes& made);

  std::unique_ptr<Workers> m_workers;
};

#endif
