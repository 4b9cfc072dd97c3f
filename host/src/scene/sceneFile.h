#pragma once

#include <atomic>
#include <cstdint>
#include <string>

namespace host {

class Session;

/// Opening, importing and saving scenes. All three throw host::Error and have then changed nothing: a file
/// that cannot be read leaves the scene that was open as it was, selection and undo queue included; a file
/// that cannot be written stays as it was on disk. Warnings of the reader go to the session's messages.
/// None of it is undoable, as in Maya.

/// Replaces the scene by that of a Maya ASCII file. Selection and undo queue are empty afterwards.
/// `bytesRead` tells another thread how far the reading has come.
void openScene(Session& session, const std::string& path, std::atomic<std::uint64_t>* bytesRead = nullptr);

/// Adds the nodes of a file to the scene, their names in the given namespace (empty = as they are; taken
/// names get a number).
void importScene(Session& session, const std::string& path, const std::string& nameSpace);

/// Writes the scene to a file beside the target, which then takes the target's place (scene/replacedFile.h).
/// The scene counts as unmodified afterwards; its name is the caller's matter.
void saveScene(Session& session, const std::string& path);

} // namespace host
