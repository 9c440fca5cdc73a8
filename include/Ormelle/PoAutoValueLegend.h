#ifndef ORMELLE_POAUTOVALUELEGEND_H
#define ORMELLE_POAUTOVALUELEGEND_H

#include <functional>
#include <vector>

#include <Inventor/fields/SoSFVec2f.h>

#include <Ormelle/PoValueLegend.h>

/// Root of the value legends that fit themselves into a rectangle.
class ORMELLE_API PoAutoValueLegend : public PoValueLegend {
  PO_KIT_ABSTRACT_HEADER(PoAutoValueLegend, PoValueLegend);

 public:
  /// Which values are written beside one long box.
  enum ValDistrib { VAL_ALL = 0, VAL_LINEAR = 1, VAL_MIN_MAX = 2 };

  /// Two opposite corners of the legend; 0 0 and 1 1 by default. If `end` is below `start`, values run from the top
  /// down; boxes beside each other, if it is left of it, from the right.
  /// @{
  SoSFVec2f start;
  SoSFVec2f end;
  /// @}

 protected:
  PoAutoValueLegend();
  ~PoAutoValueLegend() override;

  void drawBoxLegendBoxesA(SoGroup* boxes, SoGroup* borders, const SbVec2f& origin, float width, float height,
                           int boxIndex) override;
  void computeGraphicSizeForValues(float& across, float& down, float& least) override;

  /// Draws separate boxes: `make` adds them for the values that are shown, unless there are none. Before and behind
  /// them come those for what thresholds cut off.
  void makeBoxes(const std::function<void(const std::vector<float>& shown)>& make);
  /// A box for one value or two, in the colours of the mapping.
  void addBox(float value1, float value2, const SbString& text, int twoValues);
  /// Draws separate boxes, with the records made before; 0 boxes draw the frame only.
  void drawBoxesLegend(int numBoxes, const SbString* texts);
  /// Draws one box that is cut at the values. `maxValueSize` is the part of the room across that texts may take.
  void drawOneBoxLegend(ValDistrib distribution, float maxValueSize, int lowerUpperBoxes);

 private:
  bool beginLegend(SbVec2f& origin, float& width, float& height);
  void drawFrame(const SbVec2f& origin, float width, float height, Plimit& limits);
  void makeOneBox(bool hasEnds);
  void drawOneBox(ValDistrib distribution, float maxValueSize, int lowerUpperBoxes, Plimit limits);
};

#endif
