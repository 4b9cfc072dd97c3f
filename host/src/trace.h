#pragma once

#include <cstdio>
#include <functional>
#include <string>

namespace host {

/// What plug-ins asked of the host, one tab-separated line per call, in order (the workbench's --trace).
/// A line is: kind, fields, each after a tab, text escaped (\n, \t, \\).
class Trace {
public:
    using Sink = std::function<void(const std::string& line)>;
    void setSink(Sink sink) { target = std::move(sink); }
    bool on() const { return static_cast<bool>(target); }

    void mel(bool display, bool undo, const std::string& text); ///< run at once
    void idle(bool display, const std::string& text);           ///< queued for idle
    void warning(const std::string& text);
    void error(const std::string& text);
    void draw(const std::string& call); ///< "beginDrawable selectable=2 name=0" ...
    void status(const std::string& helpText);

    static std::string escaped(const std::string& text);

private:
    Sink target;
};

} // namespace host
