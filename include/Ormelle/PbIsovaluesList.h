#ifndef ORMELLE_PBISOVALUESLIST_H
#define ORMELLE_PBISOVALUESLIST_H

#include <Ormelle/PbArrayOfFloat.h>
#include <Ormelle/PbBase.h>

/// The ascending list of levels that contour lines, filled bands, texture contouring and value legends share; at first
/// 1, 2, ... 10.
///
/// A list is regular when all gaps between neighbours are exactly equal, or when it was set as such. Every setter
/// announces `OBJECT_CHANGE`. What can't make a list is ignored and leaves the list as it was: ends, starts or steps
/// that aren't finite, a number of levels below 1 or above `MAX_REGULAR_ISOVALUES`, a null array. When memory runs out
/// the list is empty.
///
/// Searches cost the logarithm of the number of levels.
class ORMELLE_API PbIsovaluesList : public PbBase {
 public:
  enum Limit {
    MAX_REGULAR_ISOVALUES = 1 << 24  ///< beyond it a float can't even count the levels
  };

  PbIsovaluesList();
  /// As setRegularIsoList(); with arguments that can't make a list, the default one.
  PbIsovaluesList(float min, float max, int num);
  PbIsovaluesList(const PbIsovaluesList& other) = default;
  PbIsovaluesList& operator=(const PbIsovaluesList& other);

  /// `num` evenly spaced levels from the smaller to the greater end, whichever order they come in; the last one is the
  /// greater end exactly. A single level lies on the greater end, and its step is the distance of the ends. The shorter
  /// forms keep the number of levels or the ends.
  /// @{
  void setRegularIsoList(float min, float max, int num);
  void setRegularIsoList(float min, float max);
  void setRegularIsoList(int num);
  /// @}
  /// The same between the least and the greatest finite value among the `n` given; none is ignored. The shorter form
  /// keeps the number of levels.
  /// @{
  void setRegularIsoList(int n, const float* values);
  void setRegularIsoList(int n, const float* values, int num);
  /// @}
  /// `num` levels from `start` by `step`. With a negative step the list descends from `start` and is stored ascending
  /// with the step's absolute value.
  void setRegularIsoList(int num, float start, float step);
  /// The `n` values, sorted. Values that aren't finite are left out; if none is left, the list stays as it was. The
  /// step becomes the smallest gap; a single level leaves it as it was.
  void setIrregularIsoList(int n, const float* values);

  /// The levels, owned by the list and valid until it changes; null if there are none. `min` and `max` are the ends.
  const float* getIsoList(int& num, float& min, float& max, float& step, int& isRegular) const;

  /// The greatest level not above `value`, -1e20 if there is none.
  float getLowerIsovalue(float value) const;
  /// The smallest level not below `value`, 1e20 if there is none.
  float getUpperIsovalue(float value) const;
  /// Index of the first level not below `value`, the number of levels if there is none.
  int getIndex(float value) const;

  /// A note of the application; the library doesn't act on it.
  void isoListDependsOnRep(int depends) { m_dependsOnRep = depends; }
  int isIsoListDependsOnRep() const { return m_dependsOnRep; }

  /// Prints the list to standard output.
  void print() const;

  /// Compare the levels, exactly.
  bool operator==(const PbIsovaluesList& other) const { return m_values == other.m_values; }
  bool operator!=(const PbIsovaluesList& other) const { return !(*this == other); }

 private:
  void homogIsovalList(float min, float max, int num);
  bool allocIsovalList(int num);
  void notifyObjectChange();

  float m_min = 1;
  float m_max = 10;
  PbArrayOfFloat m_values;
  float m_step = 1;
  float m_minDelta = 1;
  int m_isRegular = 1;
  int m_dependsOnRep = 0;
};

#endif
