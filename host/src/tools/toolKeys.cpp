#include "mel/interpreter.h"
#include "session.h"
#include "tools/hotkeySets.h"
#include "tools/idleQueue.h"
#include "tools/runTimeCommands.h"
#include "tools/tools.h"
#include "types/error.h"
#include "undo/undoQueue.h"

#include <maya/MPxContext.h>

#include <cctype>

namespace host {

namespace {

/// The chords that a key press may be bound as: with Shift, "c" is also the letter "C".
std::vector<KeyChord> chords(const std::string& key, Tools::Modifiers modifiers)
{
    KeyChord chord;
    chord.key = key;
    chord.control = modifiers.control;
    chord.shift = modifiers.shift;
    std::vector<KeyChord> found = {chord};
    const bool letter = key.size() == 1 && std::isalpha(static_cast<unsigned char>(key[0])) != 0;
    if (letter && modifiers.shift) {
        chord.key[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(key[0])));
        chord.shift = false;
        found.insert(found.begin(), chord);
    }
    return found;
}

} // namespace

void Tools::key(const std::string& key, Modifiers modifiers)
{
    if (key.empty())
        throw Error("A key press needs a key.");
    if (!toolKey(key))
        hotkey(key, modifiers);
    idleQueue->run();
}

bool Tools::toolKey(const std::string& key)
{
    void (MPxContext::*action)() = nullptr;
    if (key == "Return" || key == "Enter")
        action = &MPxContext::completeAction;
    else if (key == "Delete" || key == "Backspace")
        action = &MPxContext::deleteAction;
    else if (key == "Escape" || key == "Esc")
        action = &MPxContext::abortAction;
    MPxContext* context = action ? findContext(currentName) : nullptr;
    if (!context)
        return false;
    const UndoQueue::Isolate isolated(owner.undo());
    callContext([&] { (context->*action)(); });
    return true;
}

void Tools::hotkey(const std::string& key, Modifiers modifiers)
{
    const HotkeySets::Binding* binding = nullptr;
    for (const KeyChord& chord : chords(key, modifiers)) {
        if (!binding)
            binding = hotkeySets->lookUp(chord);
    }
    if (!binding || binding->press.empty())
        return;
    const auto named = namedCommands->byName.find(binding->press);
    if (named == namedCommands->byName.end())
        throw Error("Hotkey '" + key + "' runs '" + binding->press + "', which is no name command.");
    // A copy: the command may redefine itself or change the keys.
    const std::string text = named->second.command;
    const UndoQueue::Isolate isolated(owner.undo());
    owner.mel().run(text);
}

} // namespace host
