#include "host/scene/sceneFixture.h"

#include <chrono>
#include <cmath>

#include <sys/resource.h>

namespace {

using testing_support::SceneTest;

class SceneLimits : public SceneTest {
public:
#if defined(__SANITIZE_ADDRESS__) || defined(__has_feature)
    static constexpr long kMostMegabytes = 512; // freed memory is not used again at once
    static constexpr double kMostSeconds = 20;
#else
    static constexpr long kMostMegabytes = 64;
    static constexpr double kMostSeconds = 2;
#endif
    static constexpr std::size_t kKilobyte = 1000;
    static long megabytes()
    {
        rusage usage = {};
        ::getrusage(RUSAGE_SELF, &usage);
        return usage.ru_maxrss / 1024;
    }
    /// As many statements as a kilobyte has room for; `#` in them becomes a number that grows to `last`.
    static std::string kilobyteOf(const std::string& begin, const std::string& statement, double last)
    {
        std::string text = begin;
        const std::size_t most = (kKilobyte - begin.size()) / statement.size();
        for (std::size_t step = 1; step <= most; ++step) {
            std::string one = statement + "\n";
            const double number = std::pow(last, static_cast<double>(step) / static_cast<double>(most));
            for (std::size_t at = one.find('#'); at != one.npos; at = one.find('#', at))
                one.replace(at, 1, std::to_string(static_cast<std::uint32_t>(number)));
            if (text.size() + one.size() <= kKilobyte)
                text += one;
        }
        return text;
    }
};

/// What a file costs follows what it holds, not the numbers in it.
TEST_F(SceneLimits, AKilobyteTakesLittleMemoryAndTimeWhateverItSays)
{
    const std::string skin = "createNode skinCluster -n s;\n", blend = "createNode blendShape -n b;\n";
    const std::string shape = "createNode transform -n t;\ncreateNode mesh -n m -p t;\n";
    const std::string two =
        "createNode transform -n t;\ncreateNode transform -n u;\naddAttr -m -ln x -sn x -at double;\n"
        "addAttr -m -im false -ln y -sn y -at double;\n";
    const std::string alias =
        "setAttr \".aal\" -type \"attributeAlias\" {\"p\",\"q\",\"q\",\"p\",\"r\",\"r\"};\n"
        "setAttr \".p\" 1;\nsetAttr \".r\" 1;\nconnectAttr b.q b.r;\n";
    const std::pair<const char*, std::string> cases[] = {
        {"numbers", kilobyteOf(blend, "setAttr .w[#] 1;", 4e9)},
        {"numbers of many arrays", kilobyteOf(blend, "setAttr .it[#].bw[1023] 1;", 4e9)},
        {"numbers far down", kilobyteOf(blend, "setAttr .it[#].itg[#].tw[#] 1;", 4e9)},
        {"influences", kilobyteOf(skin, "setAttr .pm[#] -type matrix 1 0 0 0 0 1 0 0 0 0 1 0 0 0 0 1;", 4e9)},
        {"locks", kilobyteOf(blend, "setAttr -l on .w[0:#];", 1e3)},
        {"vertices", kilobyteOf(shape, "setAttr .pt[#] -type float3 1 2 3;", 4e9)},
        {"size hints", kilobyteOf(blend, "setAttr -s # .w;", 4e9)},
        {"links", kilobyteOf(two, "connectAttr t.tx u.x[#];", 4e9)},
        {"next ones", kilobyteOf(two, "connectAttr -na t.tx u.y;", 1)},
        {"unknown next ones", kilobyteOf(two, "connectAttr -na t.tx u.z;", 1)},
        {"children", two + "addAttr -ln c -sn c -at compound -nc 2000000000;"},
        {"aliases", blend + alias},
        {"comment in a word", "createNode transform;\nsetAttr .tx 5//was 4; now 5"},
        {"text in a comment", "createNode transform;\nsetAttr .t -type double3 1 2 3// the 3\" cube"}};
    for (const auto& [name, text] : cases) {
        ASSERT_LE(text.size(), 1024u) << name;
        const std::string file = write("small.ma", "//Maya\n" + text);
        const long before = megabytes();
        const auto begin = std::chrono::steady_clock::now();
        allowMessages();
        mel("if (!catch(`file -f -o \"" + file + "\"`)) { file -rename \"" + path("out.ma") +
            "\"; file -save; }");
        const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - begin;
        EXPECT_LE(megabytes() - before, kMostMegabytes) << name;
        EXPECT_LE(seconds.count(), kMostSeconds) << name;
    }
}

} // namespace
