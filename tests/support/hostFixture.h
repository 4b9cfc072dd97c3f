#pragma once

#include "mel/value.h"
#include "messages.h"
#include "session.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace testing_support {

/// A test with a running host. It fails when a warning or error appeared that the test did not declare, when
/// a declared one did not appear, and when an undo chunk was left open.
class HostTest : public ::testing::Test {
public:
    host::Session session;

    /// Runs MEL, then what waits for idle, and returns the result; a script error becomes a test failure.
    host::mel::Value mel(const std::string& text);
    int melInt(const std::string& text) { return mel(text).toInt(); }
    double melFloat(const std::string& text) { return mel(text).toFloat(); }
    std::string melString(const std::string& text) { return mel(text).toString(); }
    std::vector<double> melFloats(const std::string& text) { return mel(text).toFloatArray(); }
    std::vector<std::string> melStrings(const std::string& text) { return mel(text).toStringArray(); }
    /// Runs MEL that must fail; returns the error's text.
    std::string melError(const std::string& text);

    /// Declares messages that must appear (in any order), word for word.
    void expectWarning(const std::string& text) { declared.push_back("warning: " + text); }
    void expectError(const std::string& text) { declared.push_back("error: " + text); }
    /// Lets any message pass from here on (for tests of bad input that look at the messages themselves).
    void allowMessages() { lenient = true; }
    const std::vector<std::string>& messages() const { return seen; }

    /// The trace from here on, one line per call.
    std::vector<std::string> trace;

protected:
    HostTest();
    ~HostTest() override;
    void TearDown() override;

private:
    std::vector<std::string> declared;
    std::vector<std::string> seen;
    bool lenient = false;
};

} // namespace testing_support
