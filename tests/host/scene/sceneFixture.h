#pragma once

#include "support/hostFixture.h"
#include "support/paths.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

namespace testing_support {

/// A host with a folder of its own for files, removed afterwards.
class SceneTest : public HostTest {
public:
    SceneTest()
        : folder(std::filesystem::temp_directory_path() /
                 ("scene." + std::to_string(reinterpret_cast<std::uintptr_t>(this)) + "." +
                  ::testing::UnitTest::GetInstance()->current_test_info()->name()))
    {
        std::filesystem::create_directories(folder);
    }
    ~SceneTest() override
    {
        std::error_code ignored;
        std::filesystem::permissions(folder, std::filesystem::perms::owner_all, ignored);
        std::filesystem::remove_all(folder, ignored);
    }

    std::string path(const std::string& name) const { return (folder / name).string(); }

    std::string write(const std::string& name, const std::string& text) const
    {
        std::ofstream(path(name), std::ios::binary) << text;
        return path(name);
    }
    static std::string read(const std::string& file)
    {
        std::ifstream input(file, std::ios::binary);
        std::ostringstream text;
        text << input.rdbuf();
        return text.str();
    }

    /// Opens a scene of these statements; the head is added.
    void open(const std::string& statements)
    {
        openFile(write("scene.ma", "//Maya ASCII 2022 scene\nrequires maya \"2022\";\n" + statements));
    }
    void openFile(const std::string& file) { mel("file -force -open \"" + file + "\""); }
    std::string openError(const std::string& file) { return refusal("file -force -open \"" + file + "\""); }
    /// The text of a failing command without the line of the script in front.
    std::string refusal(const std::string& command)
    {
        const std::string text = melError(command), line = "line 1: ";
        EXPECT_EQ(text.substr(0, line.size()), line);
        return text.substr(std::min(line.size(), text.size()));
    }
    /// Saves under a name and returns what was written.
    std::string save(const std::string& name = "saved.ma")
    {
        mel("file -rename \"" + path(name) + "\"; file -save -type \"mayaAscii\"");
        return read(path(name));
    }
    /// Saves, opens that and saves again; both texts must be the same. Returns it.
    std::string saveTwice()
    {
        const std::string once = save("once.ma");
        openFile(path("once.ma"));
        EXPECT_EQ(save("twice.ma"), once);
        return once;
    }

private:
    std::filesystem::path folder;
};

} // namespace testing_support
