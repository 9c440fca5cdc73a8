#ifndef ORMELLE_PBDATEFORMATMAPPING_H
#define ORMELLE_PBDATEFORMATMAPPING_H

#include <memory>

#include <Inventor/SbString.h>

#include <Ormelle/PbBase.h>

class PiDate;

/// How dates are written, and which coordinate each of them stands at: the straight line through two dates.
///
/// A format is a string of letters, each of which stands for one item of a date. A date is read item by item in that
/// order; between two items all that is neither a letter nor a digit of ASCII is skipped, so "12-03-71", "12/3/71" and
/// "12 03 71" all fit "dmy".
///
/// | Letter | Item |
/// |---|---|
/// | `Y` | year, exactly four digits |
/// | `y` | year, exactly two digits, 1900 to 1999 |
/// | `m` | month, one or two digits |
/// | `M` | month name, in English, French, Spanish or German |
/// | `d` | day of the month, one or two digits |
/// | `D` | day name, in English, French, German or Spanish |
/// | `h`, `H` | hour, 0 to 23 |
/// | `'` | minute, 0 to 59 |
/// | `"` | second, below 60, with decimals if wanted |
///
/// Names are upper case without accents. Of a month just the first four letters are written, of MAY, MAI all three; of
/// a day just the first three (Wednesday is "WEN").
///
/// A date without a year is of 1993, without a month of January, without a day on the 1st or, if it names a day of the
/// week, on the first such day of the month. A day beyond the end of its month is the last of that month.
///
/// @code
/// PbDateFormatMapping mapping("1-01-1992", "31-12-1992", 0, 365, "dmY");
/// float coord;
/// if (mapping.getCoordinate("14-07-1992", coord)) ...  // 195
/// @endcode
///
/// Read by the time axis; carried by `PoDateFormatMapping`. The calendar is the Gregorian one, also before 1582; days
/// have 86400 seconds.
class ORMELLE_API PbDateFormatMapping : public PbBase {
 public:
  /// Format "dmy", "1-01-70" at 0 and "2-01-70" at 1.
  PbDateFormatMapping();
  /// A bad format or date leaves the default in its place.
  PbDateFormatMapping(const char* date1, const char* date2, float coord1, float coord2, const char* format);
  PbDateFormatMapping(const SbString& date1, const SbString& date2, float coord1, float coord2, const SbString& format);
  PbDateFormatMapping(const PbDateFormatMapping& other);
  /// Announces `OBJECT_CHANGE` once the values are in.
  PbDateFormatMapping& operator=(const PbDateFormatMapping& other);
  ~PbDateFormatMapping() override;

  /// Sets the two dates, written by the current format, and their coordinates. The earlier date always gets the smaller
  /// coordinate. Returns 1 and announces `OBJECT_CHANGE`; or returns 0 and leaves the mapping as it was if a date can't
  /// be read or a coordinate isn't finite.
  int setDateMapping(const SbString& date1, const SbString& date2, float coord1, float coord2);
  /// The earlier date at the smaller coordinate `coord1`, the later one at `coord2`, both written by the current format
  /// so that setDateMapping() reads the same dates again, as far as the format has letters for what they hold.
  void getDateMapping(SbString& date1, SbString& date2, float& coord1, float& coord2) const;

  /// Sets the format for all dates to come and announces `OBJECT_CHANGE`; dates already set stay. Returns 0, or what
  /// checkDateFormat() finds wrong, and then keeps the former format.
  int setFormat(const SbString& format);
  const SbString& getFormat() const { return m_format; }
  /// 0 if `format` is good; otherwise the position, from 1, of the first character that is no format letter or stands
  /// for something that came before. `Y` and `y`, `m` and `M`, `h` and `H` exclude each other; `d` and `D` do not.
  static int checkDateFormat(const SbString& format);

  /// The coordinate of `date`, also beyond the two dates. Returns 1, or 0 if the date can't be read.
  int getCoordinate(const SbString& date, float& coord) const;

  /// @name For the library's own use
  /// While both dates, or both coordinates, are the same there is no line: then the answer is the one of the earlier
  /// date.
  /// @{
  float getCoordinateP(const PiDate& date) const;
  PiDate getDateP(float coord) const;
  /// @}

 private:
  std::unique_ptr<PiDate> m_reference;  // the earlier date
  std::unique_ptr<PiDate> m_end;        // the later one: the span alone, being a float, can miss it by minutes
  float m_coordMin = 0;
  float m_coordMax = 1;
  float m_span = 86400;  // seconds from the reference to the end, never negative
  SbString m_format = "dmy";
};

#endif
