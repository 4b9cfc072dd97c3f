#include "documents.h"

#include "support/paths.h"

#include <filesystem>
#include <fstream>

namespace testing_support {

namespace {

std::vector<std::string> documents()
{
    std::vector<std::string> found = {"README.md", "workbench/README.md", "scenes/README.md"};
    for (const auto& entry : std::filesystem::directory_iterator(sourceDir() + "/docs")) {
        if (entry.path().extension() == ".md")
            found.push_back("docs/" + entry.path().filename().string());
    }
    return found;
}

std::string trimmed(const std::string& text)
{
    const std::size_t first = text.find_first_not_of(" \t");
    const std::size_t last = text.find_last_not_of(" \t");
    return first == std::string::npos ? std::string() : text.substr(first, last - first + 1);
}

std::string withoutQuotes(const std::string& cell)
{
    const bool whole = cell.size() > 1 && cell.front() == '`' && cell.find('`', 1) == cell.size() - 1;
    return whole ? cell.substr(1, cell.size() - 2) : cell;
}

} // namespace

std::vector<CommandBlock> commandBlocks()
{
    std::vector<CommandBlock> blocks;
    for (const std::string& document : documents()) {
        std::ifstream file(sourceDir() + "/" + document);
        bool inside = false;
        for (std::string line; std::getline(file, line);) {
            const std::string text = trimmed(line);
            if (text.compare(0, 3, "```") == 0) {
                inside = !inside;
                if (inside)
                    blocks.push_back({document, text.substr(3), {}});
            } else if (inside && !text.empty()) {
                blocks.back().lines.push_back(text);
            }
        }
    }
    return blocks;
}

std::vector<std::vector<std::string>> tableRows(const std::string& document)
{
    std::ifstream file(sourceDir() + "/" + document);
    std::vector<std::vector<std::string>> rows;
    for (std::string line; std::getline(file, line);) {
        const std::string text = trimmed(line);
        if (text.empty() || text.front() != '|' || text.find("---") != std::string::npos)
            continue;
        std::vector<std::string> cells;
        for (std::size_t at = 1; at < text.size();) {
            const std::size_t end = std::min(text.find('|', at), text.size());
            cells.push_back(withoutQuotes(trimmed(text.substr(at, end - at))));
            at = end + 1;
        }
        rows.push_back(std::move(cells));
    }
    return rows;
}

} // namespace testing_support
