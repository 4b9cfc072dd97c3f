#include "mel/command.h"
#include "mel/interpreter.h"
#include "support/hostFixture.h"
#include "types/error.h"
#include "undo/undoQueue.h"

// Every command with every flag in every mode, with few objects, many, or the wrong ones: it works or is
// refused.

namespace {

using namespace host::mel;

class AnyCall : public testing_support::HostTest {
protected:
    void SetUp() override
    {
        allowMessages();
        session.mel().limits.outside = false;
        session.mel().limits.points = 1000;
        prepare();
    }

    void prepare()
    {
        session.newScene();
        mel("polyPlane -n sheet -sx 2 -sy 1; polyPlane -n smile -sx 2 -sy 1; joint -n hip; joint -n knee -p "
            "1 0 0;"
            "skinCluster -n skin -tsb hip knee sheet; cluster -n lift smile; blendShape -n face smile sheet;"
            "select -cl");
        session.undo().flush();
    }

    /// Everything that the call did is taken back and done again.
    void call(const std::string& name, const std::vector<Word>& words)
    {
        try {
            session.commands().call(name, words);
            const std::size_t entries = session.undo().undoCount();
            for (std::size_t i = 0; i < entries; ++i)
                session.undo().undo();
            for (std::size_t i = 0; i < entries; ++i)
                session.undo().redo();
        } catch (const host::Error&) {
            // A refusal.
        } catch (const std::exception& error) {
            ADD_FAILURE() << error.what();
        }
        while (session.undo().openChunks() > 0)
            session.undo().closeChunk();
    }
};

Word flagWord(const std::string& name)
{
    return {Value("-" + name), Word::Kind::kFlag};
}

Word argument(ArgType type, bool odd)
{
    switch (type) {
    case ArgType::kString:
        return {Value(odd ? "" : "sheet"), Word::Kind::kLiteral};
    case ArgType::kFloat:
        return {Value(odd ? -1e300 : 1.0), Word::Kind::kComputed};
    default:
        return {Value(odd ? std::numeric_limits<int>::min() : 1), Word::Kind::kComputed};
    }
}

const std::vector<std::vector<const char*>> kObjects = {{},
                                                        {"sheet"},
                                                        {"skin"},
                                                        {"sheet.tx"},
                                                        {"persp"},
                                                        {""},
                                                        {"skin", "sheet.vtx[0:3]"},
                                                        {"lift", "sheet"},
                                                        {"a", "b", "c"}};

const std::vector<std::vector<const char*>> kModes = {{}, {"q"}, {"e"}};

TEST_F(AnyCall, worksOrIsRefused)
{
    for (const std::string& name : session.commands().names()) {
        SCOPED_TRACE(name);
        const CommandSpec spec = *session.commands().declaration(name);
        std::vector<const FlagSpec*> flags = {nullptr};
        for (const FlagSpec& flag : spec.flags)
            flags.push_back(&flag);
        for (const FlagSpec* const flag : flags) {
            for (const auto& mode : kModes)
                for (const auto& objects : kObjects)
                    for (const bool odd : {false, true}) {
                        std::vector<Word> words;
                        for (const char* const word : mode)
                            words.push_back(flagWord(word));
                        if (flag)
                            words.push_back(flagWord(flag->longName));
                        if (flag && (mode.empty() || *mode[0] != 'q' || flag->queryArgs))
                            for (const ArgType type : flag->args)
                                words.push_back(argument(type, odd));
                        for (const char* const object : objects)
                            words.push_back({Value(object), Word::Kind::kLiteral});
                        call(name, words);
                    }
            prepare();
        }
    }
}

} // namespace
