#ifndef ORMELLE_PIPIELAYOUT_H
#define ORMELLE_PIPIELAYOUT_H

#include <vector>

#include <Inventor/SbBox2f.h>
#include <Inventor/SbVec2f.h>

/// Finds places for the annotations of a pie: inside their slices, or outside, where they make room for each other.
///
/// Outer annotations stand in rows round the pie. Within a row they keep the order of their slices, so that leaders
/// don't cross, and move from where they want to be by as little as possible (least squares with an order, by pooling
/// neighbours; Barlow et al., Statistical Inference under Order Restrictions, 1972). Where a row has no room for all of
/// them, those of the smallest slices are left out.
class PiPieLayout {
 public:
  /// Where a row of outer annotations runs.
  enum Outer {
    RADIAL_EXT,          ///< round the pie, each read along its radius
    HORIZONTAL_EXT,      ///< left and right of the pie, as near as each can come
    HORIZONTAL_ALIGNED,  ///< on a line above the pie and one below
    VERTICAL_ALIGNED,    ///< on a line left of the pie and one right
    SQUARE_ALIGNED       ///< on the sides of a square round the pie
  };

  struct Annotation {
    double start;  ///< angles of the slice, in radians
    double end;
    double weight;    ///< size of the slice: the small give way
    SbVec2f center;   ///< of the slice, which may be pulled out
    float width = 0;  ///< of the box of texts; an annotation without width or height is left out
    float height = 0;
  };

  struct Place {
    bool isShown = false;
    SbVec2f center;             ///< of the box
    float angle = 0;            ///< in which it reads, in radians, at most a quarter turn
    bool isMirrored = false;    ///< whether the near end of the box, seen from the pie, is its right one
    std::vector<SbVec2f> line;  ///< the leader, from the slice to the box; empty for inner ones
  };

  struct Pie {
    SbVec2f center = SbVec2f(0, 0);
    float innerRadius = 0;
    float radius = 1;
    float clearRadius = 1;  ///< what is inside of it belongs to the slices, pulled out or not
    SbBox2f frame;          ///< annotations stay inside; empty: there is none
  };

  /// Inside each slice, at a distance from its centre, 0 or less: where it fits best. One that doesn't fit into its
  /// slice isn't shown.
  static std::vector<Place> placeInner(const Pie& pie, const std::vector<Annotation>& annotations, bool isRadial,
                                       float distance);

  /// Outside. The three lengths are the legs of a leader: out along the middle of the slice, on in that direction or to
  /// where the annotation found its place, and along the line of reading.
  static std::vector<Place> placeOuter(const Pie& pie, const std::vector<Annotation>& annotations, Outer outer,
                                       float length1, float length2, float length3);

  /// Positions for intervals of the given lengths in their order inside [low, high], nearest to the wanted middles.
  /// There must be room for them.
  static std::vector<double> spread(const std::vector<double>& wanted, const std::vector<double>& lengths, double low,
                                    double high);
};

#endif
