#include "host/scene/sceneFixture.h"

#include <clocale>
#include <cstdlib>

namespace {

using testing_support::SceneTest;

/// A process whose numbers have commas, as an application that follows the user's locale has them.
class OtherLocale : public SceneTest {
public:
    OtherLocale()
    {
        const std::string make =
            "localedef --no-archive -c -i de_DE -f UTF-8 '" + path("de_DE.UTF-8") + "' 2>/dev/null";
        made = std::system(make.c_str()) == 0 && ::setenv("LOCPATH", path("").c_str(), 1) == 0 &&
               std::setlocale(LC_ALL, "de_DE.UTF-8") != nullptr;
    }
    ~OtherLocale() override
    {
        std::setlocale(LC_ALL, "C");
        ::unsetenv("LOCPATH");
    }
    bool made = false;
};

TEST_F(OtherLocale, ChangesNoNumberInFilesScriptsAndTraces)
{
    ASSERT_TRUE(made) << "localedef of the package locales is missing";
    ASSERT_EQ(std::to_string(0.5), "0,500000");
    open("currentUnit -l inch -a radian -t film;\n"
         "createNode transform -n \"t\";\n\tsetAttr \".t\" -type \"double3\" 0.1 -2.5 1e-7 ;\n\tsetAttr "
         "\".rx\" 0.5;\n"
         "createNode joint -n \"j\";\n\tsetAttr \".ty\" 1.5;\n");
    EXPECT_EQ(melFloat("getAttr t.ty"), -2.5 * 2.54);
    EXPECT_EQ(melString("string $s = 0.25"), "0.25");
    EXPECT_EQ(melFloat("float $f = \"1.5\""), 1.5);
    EXPECT_EQ(melFloat("softSelect -e -ssc \"1,0,2,0.25,0.5,2\"; softSelect -q -ssd"),
              melFloat("softSelect -q -ssd"));
    EXPECT_EQ(melString("softSelect -q -ssc"), "1,0,2,0.25,0.5,2");
    mel("polyCube -n box; select -r j box; skinCluster -n skin; dagPose -q -members `dagPose -q -bindPose "
        "j`");
    const std::string text = saveTwice();
    EXPECT_NE(text.find("setAttr \".t\" -type \"double3\" 0.1 -2.5 1e-07 ;"), std::string::npos) << text;
    EXPECT_NE(text.find("\"xform\" 1 1 1 0 0 0 0 0 3.81"), std::string::npos) << text;
    EXPECT_EQ(text.find("0,5"), std::string::npos) << text;
}

} // namespace
