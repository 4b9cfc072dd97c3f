#include "options.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <iostream>
#include <map>

namespace workbench {

namespace {

constexpr int kUsageStatus = 2;
constexpr int kLeastSize = 16, kMostSize = 8192;
constexpr double kMostScale = 8.0, kMostPicturePixels = 16384.0;

constexpr const char* kExamples = R"(
Examples:
  morvane-workbench --batch --script strokes.mel --image view.png --save result.ma character.ma
      plays strokes on a character; leaves a picture and the sculpted scene
  echo 'print `ls -type "skinCluster"`' | morvane-workbench --batch --script - character.ma
      asks a scene something by a script from standard input
)";

/// "960x540" into two numbers; a text that says what is wrong, or an empty one.
std::string readSize(const std::string& text, int& width, int& height)
{
    char* end = nullptr;
    const long across = std::strtol(text.c_str(), &end, 10);
    const bool cross = end != text.c_str() && (*end == 'x' || *end == 'X');
    const char* second = cross ? end + 1 : end;
    const long up = std::strtol(second, &end, 10);
    if (!cross || end == second || *end != '\0')
        return "'" + text + "' is no size; write WIDTHxHEIGHT, for example 960x540";
    if (across < kLeastSize || up < kLeastSize || across > kMostSize || up > kMostSize)
        return "'" + text + "' is out of range; sides are " + std::to_string(kLeastSize) + " to " +
               std::to_string(kMostSize) + " pixels";
    width = static_cast<int>(across);
    height = static_cast<int>(up);
    return {};
}

/// A check that a file to be written has the one ending that is written; upper or lower case.
CLI::Validator endsIn(const std::string& ending, const std::string& kind)
{
    const auto check = [ending, kind](const std::string& path) {
        std::string tail = path.substr(path.size() - std::min(path.size(), ending.size()));
        std::transform(tail.begin(), tail.end(), tail.begin(),
                       [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
        return tail == ending ? std::string()
                              : "'" + path + "' cannot be written; " + kind + " end in " + ending;
    };
    return {check, {}};
}

/// What a single option cannot know: the size of the picture.
std::string pictureProblem(const Options& options)
{
    if (std::max(options.width, options.height) * options.scale <= kMostPicturePixels)
        return {};
    return "--scale: a picture has at most 16384 pixels on a side";
}

/// The options that repeat, in the order in which they stood on the command line whatever their kind.
std::vector<Options::Task> tasksInOrder(const CLI::App& app, const CLI::Option* script,
                                        const CLI::Option* command)
{
    std::map<const CLI::Option*, std::size_t> used;
    std::vector<Options::Task> tasks;
    for (const CLI::Option* option : app.parse_order()) {
        if (option != script && option != command)
            continue;
        const std::size_t which = used[option]++;
        const Options::Task::Kind kind =
            option == script ? Options::Task::Kind::kFile : Options::Task::Kind::kText;
        tasks.push_back({kind, option->results().at(which)});
    }
    return tasks;
}

CLI::Option* repeated(CLI::App& app, const std::string& names, std::vector<std::string>& values,
                      const std::string& help, const std::string& argument)
{
    return app.add_option(names, values, help)
        ->type_name(argument)
        ->type_size(1)
        ->expected(1)
        ->allow_extra_args(false)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
}

} // namespace

ParseResult parseCommandLine(int argc, const char* const* argv)
{
    ParseResult result;
    Options& options = result.options;
    CLI::App app("Opens a Maya ASCII scene, sculpts weights in it, saves it.", "morvane-workbench");
    app.footer(kExamples);
    app.set_version_flag("--version", "morvane-workbench " WORKBENCH_VERSION);
    std::vector<std::string> scripts, commands;
    std::string size;
    app.add_option("scene", options.scene, "Maya ASCII scene to open; a new scene without it")
        ->type_name("SCENE.ma");
    CLI::Option* batch = app.add_flag("--batch", options.batch, "no window: open, run what is asked, exit");
    CLI::Option* script =
        repeated(app, "--script", scripts, "run a MEL file, or - for standard input; repeats", "FILE.mel");
    CLI::Option* command = repeated(app, "-c,--command", commands, "run MEL text; repeats", "TEXT");
    CLI::Option* plugIn =
        app.add_option("--plug-in", options.plugIn, "load this plug-in, not the one built beside the program")
            ->type_name("FILE");
    app.add_flag("--no-plug-in", options.noPlugIn, "load no plug-in")->excludes(plugIn);
    app.add_option("--size", size, "viewport size in pixels, 960x540 by default")
        ->type_name("WxH")
        ->check(
            [&options](const std::string& text) { return readSize(text, options.width, options.height); });
    app.add_option("--scale", options.scale, "picture pixels per viewport pixel, for high-density pictures")
        ->type_name("N")
        ->check(CLI::Range(1.0, kMostScale));
    app.add_option("--image", options.image, "at the end write the picture of the viewport")
        ->type_name("FILE.png")
        ->check(endsIn(".png", "pictures"));
    app.add_option("--save", options.save, "at the end save the scene")
        ->type_name("FILE.ma")
        ->check(endsIn(".ma", "scenes"));
    app.add_option("--trace", options.trace, "write what plug-ins asked of the host, one line per call")
        ->type_name("FILE");
    app.add_option("--seconds", options.seconds, "close the window after N seconds")
        ->type_name("N")
        ->check(CLI::PositiveNumber)
        ->excludes(batch);
    try {
        app.parse(argc, argv);
        options.tasks = tasksInOrder(app, script, command);
        if (const std::string problem = pictureProblem(options); !problem.empty())
            throw CLI::ValidationError(problem);
        result.proceed = true;
    } catch (const CLI::ParseError& problem) {
        result.status = app.exit(problem, std::cout, std::cerr) == 0 ? 0 : kUsageStatus;
    }
    return result;
}

} // namespace workbench
