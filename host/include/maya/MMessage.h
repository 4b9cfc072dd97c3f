#pragma once

#include <maya/MStatus.h>
#include <maya/MTypes.h>

#include <cstdint>

namespace host {
struct Api;
}

typedef std::uintptr_t MCallbackId;

MAYA_HOST_NAMESPACE_OPEN

/// Callbacks. Every callback must be removed before the code that it calls is unloaded.
class MAYA_HOST_EXPORT MMessage {
public:
    typedef void (*MBasicFunction)(void* clientData);

    MMessage() = delete;
    static MStatus removeCallback(MCallbackId id);
    static const char* className() { return "MMessage"; }

private:
    friend struct host::Api;
};

MAYA_HOST_NAMESPACE_CLOSE
