#ifndef ORMELLE_PONONLINEARDATAMAPPING_H
#define ORMELLE_PONONLINEARDATAMAPPING_H

#include <Inventor/SbColor.h>

#include <Ormelle/PoDataMapping.h>

class PbNonLinearDataMapping;

/// Colours from functions of the application; its object is a PbNonLinearDataMapping.
///
/// Without a function it is the ramp from black at 0 to white at 1. Functions have no form in a file: a node that is
/// read back has none. A copy of a node has the functions of the node copied.
/// @code
/// static const SbColor* stripes(float v) { return std::fmod(v, 2) < 1 ? &red : &blue; }
/// auto* mapping = new PoNonLinearDataMapping;
/// mapping->setRGBFunction(stripes);
/// separator->insertChild(mapping, 0);
/// @endcode
class ORMELLE_API PoNonLinearDataMapping : public PoDataMapping {
  PO_NODE_HEADER(PoNonLinearDataMapping, PoDataMapping);

 public:
  PoNonLinearDataMapping();

  /// Sets the function that gives a colour, see PbNonLinearDataMapping: it takes the place of any other colour
  /// function. It takes effect at once; if what it answers changes later, set it again.
  /// @{
  void setRGBFunction(const SbColor* (*function)(float value));
  void setRGBFunction(const SbColor* (*function)(void* userData, float value), void* userData);
  void setHLSFunction(const float* (*function)(float value));
  void setHLSFunction(const float* (*function)(void* userData, float value), void* userData);
  /// @}
  /// Sets the function that gives a transparency in 0..1; the rest as above.
  /// @{
  void setTransparencyFunction(float (*function)(float value));
  void setTransparencyFunction(float (*function)(void* userData, float value), void* userData);
  /// @}

 protected:
  ~PoNonLinearDataMapping() override;

  void copyContents(const SoFieldContainer* from, SbBool copyConnections) override;

 private:
  PbNonLinearDataMapping& functions() const;
};

#endif
