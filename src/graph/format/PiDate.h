#ifndef ORMELLE_PIDATE_H
#define ORMELLE_PIDATE_H

#include <string>

/// A date and time of day in the Gregorian calendar, carried back before 1582, with days of 86400 seconds.
///
/// A new date is Thursday, 1 January 1970, 0:00. The members may hold anything: whatever is outside its range counts
/// into the next larger unit (month 13 is January of the next year) where a date is used.
class PiDate {
 public:
  /// Languages of day and month names.
  enum Language : int { ENGLISH = 0, FRANCAIS = 1, DEUTSCH = 2, ESPANOL = 3 };
  static constexpr int NUM_LANGUAGES = 4;
  enum StepType : int { NO_STEP = 0, SECOND = 1, MINUTE = 2, HOUR = 3, DAY = 4, MONTH = 5, YEAR = 6 };

  /// Names in upper case without accents, entry 1 Monday or January; entry 0 is "". An unknown language is English.
  static const char* const* getDays(Language language);
  static const char* const* getMonths(Language language);
  /// Days of the months of an ordinary and of a leap year, entry 1 January.
  static const int* getNumDaysPerMonth();
  static const int* getNumDaysParMonthBissex();
  static bool isLeapYear(int year);

  /// Reads `text` by `format`; see PbDateFormatMapping for what formats mean. Unknown format letters read nothing, text
  /// beyond the last item isn't looked at, and null is the empty text. Returns 0, or non-zero as soon as an item can't
  /// be read: the items before it are then set and all others are 0.
  int setDateString(const char* text, const char* format);

  /// The items that `format` names, joined by '-' within a day, ':' within a time and a blank elsewhere. Names are cut
  /// to the English letters that setDateString() reads, so that it reads this date again if the format can express it.
  std::string getDateString(const char* format) const;

  /// Days from `b` to `a`, positive when `a` is later, whatever the times of day. Ends at the range of int.
  static int getDeltaDays(const PiDate& a, const PiDate& b);
  /// Days from `other` to this date.
  int getDeltaDays(const PiDate& other) const { return getDeltaDays(*this, other); }
  /// Seconds from `b` to `a`.
  static double getDeltaSeconds(const PiDate& a, const PiDate& b);

  /// 1 Monday to 7 Sunday, from year, month and day.
  static int getDayWeek(const PiDate& date);
  int getDayWeek() const { return getDayWeek(*this); }

  /// Moves `date` by `n` steps, back when negative. Seconds keep their fraction, other steps drop it. Months and years
  /// keep the day where the month has it, else take the month's last. The day of the week follows. Where a float `n` is
  /// too large to tell one minute (hour, day) from the next, that larger unit is what it is rounded down to. Steps that
  /// aren't a number don't move; years end at the range of int.
  static void incDateStep(float n, StepType step, PiDate& date);
  void incDateStep(float n, StepType step) { incDateStep(n, step, *this); }

  int m_year = 1970;
  int m_month = 1;      // 1 to 12
  int m_day = 1;        // 1 to 31
  int m_dayOfWeek = 4;  // 1 Monday to 7 Sunday
  int m_hour = 0;
  int m_minute = 0;
  float m_second = 0;
};

#endif
