#pragma once

#include <string>
#include <vector>

namespace testing_support {

/// What one run of the program left.
struct RunResult {
    int status = -1;
    std::string out, err;
};

/// Runs a line of the shell and waits for it.
RunResult runShell(const std::string& line);

/// Runs the built program with arguments and waits for it. `environment` is put in front ("NAME=value");
/// `input` is the file that it gets as standard input.
RunResult runWorkbench(const std::vector<std::string>& arguments, const std::string& environment = {},
                       const std::string& input = "/dev/null");

/// A folder of its own for each test, removed afterwards.
class Folder {
public:
    Folder();
    ~Folder();
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;

    std::string file(const std::string& name) const { return path + "/" + name; }
    /// Writes a file and returns its path.
    std::string write(const std::string& name, const std::string& contents) const;
    std::vector<std::string> names() const;

    std::string path;
};

std::string contentsOf(const std::string& path);

} // namespace testing_support
