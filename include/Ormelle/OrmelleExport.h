#ifndef ORMELLE_ORMELLEEXPORT_H
#define ORMELLE_ORMELLEEXPORT_H

/// @file
/// ORMELLE_API marks what the shared library exports; everything else is hidden.

#if defined(_WIN32)
#if defined(ORMELLE_BUILDING)
#define ORMELLE_API __declspec(dllexport)
#else
#define ORMELLE_API __declspec(dllimport)
#endif
#else
#define ORMELLE_API __attribute__((visibility("default")))
#endif

#endif
