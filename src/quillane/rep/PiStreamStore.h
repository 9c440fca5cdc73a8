#ifndef ORMELLE_PISTREAMSTORE_H
#define ORMELLE_PISTREAMSTORE_H

#include <vector>

#include "quillane/stream/PiStreamIntegrator.h"
#include "quillane/stream/PiStreamPath.h"

/// The paths of a kit, and all they depend on.
struct PiStreamStore {
  struct Key {
    const void* mesh = nullptr;
    unsigned int geometryId = 0, topologyId = 0;
    int vecsIndex = -1;
    unsigned int vecsId = 0;
    bool hasValues = false;
    unsigned int valuesId = 0;
    const void* filter = nullptr;
    unsigned int filterId = 0, filterValuesId = 0;
    PiStreamLimits limits;
    std::vector<SbVec3f> starts;

    bool operator==(const Key&) const = default;
  };

  Key key;
  unsigned int pathsId = 0;  ///< how often paths were integrated
  std::vector<PiStreamPath> paths;
  std::vector<PiStreamTrack> tracks;
};

#endif
