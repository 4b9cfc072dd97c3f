#pragma once

#include <maya/MApiNamespace.h>

/// Release of the interface: year, update and fix.
#define MAYA_API_VERSION 20220300

/// Keeps a class or function visible across shared libraries, whatever the default of the target.
#define MAYA_HOST_EXPORT __attribute__((visibility("default")))

#include <cstdint>

typedef std::int64_t MInt64;

MAYA_HOST_NAMESPACE_OPEN

/// Spaces of points and vectors. kObject is the space of the shape itself.
class MSpace {
public:
    enum Space : int {
        kInvalid = 0,
        kTransform = 1,
        kPreTransform = 2,
        kObject = 2,
        kPostTransform = 3,
        kWorld = 4,
        kLast = 5,
    };
};

MAYA_HOST_NAMESPACE_CLOSE
