#include "plugins/pluginLibrary.h"

#include "plugins/libraryFile.h"
#include "types/error.h"
#include "types/numberText.h"

#include <maya/MTypes.h>

#include <dlfcn.h>

#include <cstdint>
#include <filesystem>

namespace host {

namespace {

// initializePlugin(MObject) and uninitializePlugin(MObject) as the C++ ABI of this platform writes them.
const char* const kInitialize = "_Z16initializePluginN8Autodesk4Maya16OpenMaya202200007MObjectE";
const char* const kUninitialize = "_Z18uninitializePluginN8Autodesk4Maya16OpenMaya202200007MObjectE";
const char* const kVersion = "MApiVersion";

/// Plug-ins are built for one yearly release; updates within the year keep the interface.
constexpr int kUpdatesPerYear = 10000;

const void* baseOf(const void* address)
{
    Dl_info info = {};
    return dladdr(address, &info) != 0 ? info.dli_fbase : nullptr;
}

} // namespace

PluginLibrary::PluginLibrary(const std::string& file) : filePath(file)
{
    std::error_code ignored;
    if (!std::filesystem::is_regular_file(filePath, ignored))
        refuse("no such file.");
    const std::string fault = libraryFault(filePath);
    if (!fault.empty())
        refuse(fault);
    handle = dlopen(filePath.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!handle)
        refuse(dlerror());
    try {
        readVersion();
        readEntryPoints();
    } catch (...) {
        dlclose(handle);
        throw;
    }
}

PluginLibrary::~PluginLibrary()
{
    dlclose(handle);
}

bool PluginLibrary::contains(const void* code) const
{
    return baseOf(code) == baseOf(reinterpret_cast<const void*>(initializer));
}

void PluginLibrary::readEntryPoints()
{
    initializer = reinterpret_cast<EntryPoint>(symbol(kInitialize));
    uninitializer = reinterpret_cast<EntryPoint>(symbol(kUninitialize));
    if (!initializer || !uninitializer)
        refuse(std::string("it is no plug-in: no entry point ") +
               (initializer ? "uninitializePlugin" : "initializePlugin") + "(MObject).");
    if (version.empty())
        refuse("it is no plug-in: no MApiVersion.");
}

// Comes first: the entry points of another release have other names, which would hide the reason.
void PluginLibrary::readVersion()
{
    const auto* text = static_cast<const char*>(symbol(kVersion));
    if (!text)
        return;
    version = text;
    if (static_cast<int>(leadingNumber(version)) / kUpdatesPerYear != MAYA_API_VERSION / kUpdatesPerYear)
        refuse("it was built for version " + version + " of the interface; this host has " +
               std::to_string(MAYA_API_VERSION) + ".");
}

void* PluginLibrary::symbol(const char* mangledName) const
{
    void* found = dlsym(handle, mangledName);
    // The search goes on in the libraries that this one needs: a hit there is not its own.
    Dl_info info = {};
    if (!found || dladdr(found, &info) == 0)
        return nullptr;
    std::error_code ignored;
    return std::filesystem::equivalent(info.dli_fname, filePath, ignored) ? found : nullptr;
}

void PluginLibrary::refuse(const std::string& reason) const
{
    throw Error("Unable to load plug-in " + filePath + ": " + reason);
}

} // namespace host
