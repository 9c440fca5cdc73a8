#include <Ormelle/PoOrmelle.h>

#include <Ormelle/PoBase.h>

#define PO_VERSION "8.6.0"

#if defined(__LP64__) || defined(_WIN64)
#define PO_WORD_SIZE "64"
#else
#define PO_WORD_SIZE "32"
#endif

const char* const PoOrmelle::s_versionString = "@(#)Ormelle " PO_VERSION " for " PO_WORD_SIZE " bits ,";

const char* PoOrmelle::getProductName() { return "Ormelle"; }

// Naming the mark here keeps it in the binary.
const char* PoOrmelle::getVersion() { return s_versionString ? PO_VERSION : nullptr; }

void PoOrmelle::init() { PoBase::init(); }

int PoOrmelle::isInitialized() { return PoBase::isInitialized(); }

void PoOrmelle::finish() { PoBase::finish(); }
