#pragma once

#include <functional>
#include <string>

namespace host {

class Trace;

/// Where messages for the person go. Standard error as Maya words them unless a sink is set:
/// "// Warning: text //", "// Error: text //", "// text //" for information.
/// print() is the only thing that writes to standard output.
class Messages {
public:
    enum class Kind { kInfo, kWarning, kError };
    using Sink = std::function<void(Kind, const std::string& text)>;

    explicit Messages(Trace& trace) : record(trace) {}

    void info(const std::string& text);
    void warning(const std::string& text);
    void error(const std::string& text);
    void print(const std::string& text);

    /// Replaces standard error (tests, the window). Empty function = standard error again.
    void setSink(Sink sink) { target = std::move(sink); }
    void setPrintSink(std::function<void(const std::string&)> sink) { printed = std::move(sink); }
    int warningCount() const { return warnings; }
    int errorCount() const { return errors; }

private:
    void send(Kind kind, const std::string& text);
    Trace& record;
    Sink target;
    std::function<void(const std::string&)> printed;
    int warnings = 0, errors = 0;
};

} // namespace host
