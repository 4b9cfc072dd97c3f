#pragma once

#include <maya/MObject.h>
#include <maya/MStatus.h>

#include <string>

namespace host {

/// A shared library that is a plug-in: it holds the two entry points and the version text. Closed at the end
/// of its life; nothing of it may be called or destroyed after that.
class PluginLibrary {
public:
    /// Throws host::Error that names the file and the reason.
    explicit PluginLibrary(const std::string& file);
    ~PluginLibrary();
    PluginLibrary(const PluginLibrary&) = delete;
    PluginLibrary& operator=(const PluginLibrary&) = delete;

    const std::string& path() const { return filePath; }
    const std::string& apiVersion() const { return version; }
    MStatus initialize(const MObject& plugin) const { return initializer(plugin); }
    MStatus uninitialize(const MObject& plugin) const { return uninitializer(plugin); }
    /// Whether the code at the address belongs to this library.
    bool contains(const void* code) const;

private:
    using EntryPoint = MStatus (*)(MObject);

    void readEntryPoints();
    void readVersion();
    /// Null when the library itself has no such symbol, whatever the libraries that it needs have.
    void* symbol(const char* mangledName) const;
    [[noreturn]] void refuse(const std::string& reason) const;

    std::string filePath;
    std::string version;
    void* handle = nullptr;
    EntryPoint initializer = nullptr;
    EntryPoint uninitializer = nullptr;
};

} // namespace host
