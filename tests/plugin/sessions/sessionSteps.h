#pragma once

#include "session.h"

#include <functional>
#include <random>
#include <string>
#include <vector>

namespace testing_support {

/// Makes up what somebody may do next, as MEL that can be played again: with the tool, with the mouse, with
/// the scene.
class SessionSteps {
public:
    SessionSteps(host::Session& session, unsigned seed, std::string library);

    /// Builds a new scene with deformers, stored weights and random links.
    void begin(const std::function<void(const std::string&)>& run);

    struct Step {
        std::string script;
        bool ofTool = false;   ///< a stroke, copy or paste: undo is not of the last bit
        bool goesBack = false; ///< undo or redo itself
        bool flushes = false;  ///< empties the undo queue and the selection
    };
    Step next();
    bool mouseIsDown() const { return down; }
    const std::string& usersSet() const { return set; }
    bool usersClickDrag() const { return clickDrag; }

    int below(int end);

private:
    using Maker = std::string (SessionSteps::*)();
    std::string press();
    std::string drag();
    std::string release();
    std::string selectPoints();
    std::string selectObjects();
    std::string settings();
    std::string reach();
    std::string copyOrPaste();
    std::string history();
    std::string otherTool();
    std::string erase();
    std::string rename();
    std::string reparent();
    std::string disconnect();
    std::string connect();
    std::string setWeight();
    std::string setNumber();
    std::string deform();
    std::string duplicate();
    std::string lock();
    std::string move();
    std::string percent();
    std::string attribute();
    std::string reopen();
    std::string reload();

    double number() { return below(2001) / 1000.0 - 0.5; }
    std::string number(double value);
    std::vector<std::string> namesOf(const char* type);
    std::string any(const std::vector<std::string>& names)
    {
        return names.empty() ? "none" : names[at(names)];
    }
    std::size_t at(const std::vector<std::string>& names)
    {
        return static_cast<std::size_t>(below(static_cast<int>(names.size())));
    }
    std::string anyDeformer() { return any(namesOf("geometryFilter")); }
    std::string anyShape();
    std::string anyPoint();
    std::string anyNode();
    std::string edit(const std::string& flags);

    host::Session& session;
    std::mt19937 engine;
    std::string library;
    std::string set;
    bool clickDrag = false;
    bool down = false;
    int x = 0, y = 0;
    int serial = 0;
};

} // namespace testing_support
