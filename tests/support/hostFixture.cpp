#include "support/hostFixture.h"

#include "mel/interpreter.h"
#include "tools/idleQueue.h"
#include "tools/tools.h"
#include "trace.h"
#include "types/error.h"
#include "undo/undoQueue.h"

#include <algorithm>

namespace testing_support {

HostTest::HostTest()
{
    session.messages().setSink([this](host::Messages::Kind kind, const std::string& text) {
        if (kind == host::Messages::Kind::kWarning)
            seen.push_back("warning: " + text);
        if (kind == host::Messages::Kind::kError)
            seen.push_back("error: " + text);
    });
    session.messages().setPrintSink([](const std::string&) {});
    session.trace().setSink([this](const std::string& line) { trace.push_back(line); });
}

host::mel::Value HostTest::mel(const std::string& text)
{
    try {
        host::mel::Value result = session.mel().execute(text);
        session.tools().idle().run();
        return result;
    } catch (const host::Error& error) {
        ADD_FAILURE() << "MEL failed: " << error.what() << "\n  in: " << text;
        return {};
    }
}

std::string HostTest::melError(const std::string& text)
{
    try {
        session.mel().execute(text);
    } catch (const host::Error& error) {
        return error.what();
    }
    ADD_FAILURE() << "MEL should have failed: " << text;
    return {};
}

HostTest::~HostTest()
{
    // The session goes last, and what it still tells must not reach what is gone.
    session.messages().setSink([](host::Messages::Kind, const std::string&) {});
    session.trace().setSink([](const std::string&) {});
}

void HostTest::TearDown()
{
    EXPECT_EQ(session.undo().openChunks(), 0) << "an undo chunk was left open";
    if (lenient)
        return;
    std::vector<std::string> left = seen;
    for (const std::string& text : declared) {
        const auto found = std::find(left.begin(), left.end(), text);
        if (found == left.end())
            ADD_FAILURE() << "expected message did not appear: " << text;
        else
            left.erase(found);
    }
    for (const std::string& text : left)
        ADD_FAILURE() << "unexpected message: " << text;
}

} // namespace testing_support
