#include <Ormelle/PbDefinedValue.h>

PbDefinedValue::~PbDefinedValue() = default;
int PbDefinedValue::operator()(float, int, int) { return 1; }
float PbDefinedValue::getUndef(int) { return 0; }
