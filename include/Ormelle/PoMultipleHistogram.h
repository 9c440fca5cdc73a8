#ifndef ORMELLE_POMULTIPLEHISTOGRAM_H
#define ORMELLE_POMULTIPLEHISTOGRAM_H

#include <Inventor/fields/SoMFFloat.h>
#include <Inventor/fields/SoMFString.h>
#include <Inventor/fields/SoSFInt32.h>

#include <Ormelle/PoHistogram.h>

/// The bars of a table of values, in groups: side by side, on each other, or as shares of their group.
///
/// Names of groups stand beyond the foot of the bars; names of bars between them and their bar, or, if bars are
/// stacked, beside the last group. Values in stacks are left out where they don't fit into their bar. In the
/// representation PERCENTAGE values are shown as percentages, rounded so that those of a group sum to 100.
///
/// A list of colours as long as the table names one for each bar; a shorter one is used in turn within each group.
///
/// Catalog, behind that of PoHistogram: the triples `sumText` and `barNameText`.
///
/// @code
/// auto* bars = new PoMultipleHistogram;
/// const float values[] = {118, 4, 154, 13, 422, 106};
/// bars->value.setValues(0, 6, values);
/// bars->numRows = 3;
/// bars->representation = PoMultipleHistogram::PERCENTAGE;
/// root->addChild(bars);
/// @endcode
class ORMELLE_API PoMultipleHistogram : public PoHistogram {
  PO_KIT_HEADER(PoMultipleHistogram, PoHistogram);
  PO_KIT_TRIPLE_HEADER(sumText);
  PO_KIT_TRIPLE_HEADER(barNameText);

 public:
  enum Representation {
    JUXTAPOSED = 0,   ///< side by side, touching each other within a group
    ACCUMULATED = 1,  ///< on each other, negative values downwards from the axis
    PERCENTAGE = 2    ///< on each other, all groups of one height; negative values count as 0
  };
  enum HistogPath {
    ROW_COLUMN = 0,  ///< a group for each row, with a bar for each column
    COLUMN_ROW = 1   ///< a group for each column, with a bar for each row
  };

  SoSFInt32 numRows;        ///< of the table; 1 by default, and at least; at most as many as there are values
  SoMFFloat value;          ///< row by row; the last row may be short; none by default
  SoMFString rowName;       ///< one a row
  SoMFString columnName;    ///< one a column
  SoSFEnum representation;  ///< a Representation; `JUXTAPOSED` by default
  SoSFEnum histogPath;      ///< a HistogPath; `ROW_COLUMN` by default
  SoSFFloat barHeight;      ///< of 100 percent, in coordinates; 1 by default
  SoSFEnum sumVisibility;   ///< of the sum of a group; `VISIBILITY_DEPEND`, by default: if bars are accumulated
  SoSFEnum sumPosition;     ///< a Position, `POS_DEPEND` by default: beyond the end of the group
  SoSFEnum sumPath;
  SoSFFloat sumFontSize;
  SoSFString sumFontName;

  PoMultipleHistogram();

  void rebuild() override;

 protected:
  ~PoMultipleHistogram() override;

  void resetParts() override;
  int colorIndex(int index) const override;

 private:
  void buildTexts();
};

#endif
