#include "runWorkbench.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

#include <sys/wait.h>
#include <unistd.h>

namespace testing_support {

namespace {

std::string quoted(const std::string& text)
{
    std::string word = "'";
    for (const char letter : text)
        word += letter == '\'' ? std::string("'\\''") : std::string(1, letter);
    return word + "'";
}

} // namespace

RunResult runShell(const std::string& line)
{
    const Folder folder;
    const std::string command =
        "{ " + line + "\n} >" + quoted(folder.file("out")) + " 2>" + quoted(folder.file("err"));
    const int status = std::system(command.c_str());
    RunResult result;
    result.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    result.out = contentsOf(folder.file("out"));
    result.err = contentsOf(folder.file("err"));
    return result;
}

RunResult runWorkbench(const std::vector<std::string>& arguments, const std::string& environment,
                       const std::string& input)
{
    std::string command = (environment.empty() ? "" : "env " + environment + " ") + quoted(WORKBENCH_PROGRAM);
    for (const std::string& argument : arguments)
        command += " " + quoted(argument);
    return runShell(command + " <" + quoted(input));
}

Folder::Folder()
{
    std::string pattern = ::testing::TempDir() + "/workbenchXXXXXX";
    path = mkdtemp(pattern.data());
}

Folder::~Folder()
{
    std::filesystem::remove_all(path);
}

std::string Folder::write(const std::string& name, const std::string& contents) const
{
    std::ofstream(file(name), std::ios::binary) << contents;
    return file(name);
}

std::vector<std::string> Folder::names() const
{
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(path))
        names.push_back(entry.path().filename().string());
    return names;
}

std::string contentsOf(const std::string& path)
{
    std::ostringstream text;
    text << std::ifstream(path, std::ios::binary).rdbuf();
    return text.str();
}

} // namespace testing_support
