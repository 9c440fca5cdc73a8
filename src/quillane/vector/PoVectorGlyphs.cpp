#include <Ormelle/PoVectorGlyphs.h>

PoVectorGlyphs::PoVectorGlyphs() = default;

PoVectorGlyphs::~PoVectorGlyphs() = default;
