#include "scene/maReader.h"

#include "scene/maText.h"

#include <algorithm>
#include <sstream>

namespace host {

/// A statement that the host does not interpret, for writing back about where it stood.
MaReader::Kept& MaReader::keep(const MaStatement& words)
{
    std::deque<Kept>& list = linksBegun ? keptTail : nodesBegun ? keptBody : keptHead;
    Kept& kept = retried ? *retried : list.emplace_back();
    kept.statements.emplace_back(words.raw, words.line);
    return kept;
}

/// A statement about the node at hand, which is kept as text itself.
void MaReader::keepWithNode(const MaStatement& words)
{
    group->statements.emplace_back(words.raw, words.line);
}

MaReader::Kept& MaReader::keepUnresolved(const MaStatement& words, const std::string& missing)
{
    Kept& kept = keep(words);
    kept.missing = missing;
    if (context == Context::kText && !group)
        group = &kept;
    return kept;
}

/// What was said too early is true now: written behind all nodes it would be read so the next time.
void MaReader::retryKept()
{
    for (std::deque<Kept>* const list : {&keptHead, &keptBody, &keptTail}) {
        for (Kept& kept : *list) {
            if (!kept.missing.empty())
                waiting.emplace(maLeaf(kept.missing.substr(0, kept.missing.find('.'))), &kept);
        }
    }
    for (auto name = waiting.begin(); name != waiting.end(); name = waiting.upper_bound(name->first)) {
        if (declared.count(name->first) > 0)
            arrived.push_back(name->first);
    }
    while (!arrived.empty()) {
        const auto [begin, end] = waiting.equal_range(arrived.back());
        arrived.pop_back();
        std::vector<Kept*> ready;
        std::transform(begin, end, std::back_inserter(ready), [](const auto& entry) { return entry.second; });
        waiting.erase(begin, end);
        for (Kept* const kept : ready)
            retry(*kept);
    }
}

/// Reads the statements again; those that still name what is missing go back to where they are kept.
void MaReader::retry(Kept& kept)
{
    const Kept former = std::exchange(kept, {});
    retried = &kept;
    for (const auto& [text, line] : former.statements) {
        std::istringstream input(text + "\n;");
        MaTokenizer again(input, file, line);
        MaStatement words;
        if (again.next(words))
            statement(words);
    }
    enter(nullptr, Context::kNone);
    retried = nullptr;
    if (!kept.missing.empty())
        waiting.emplace(maLeaf(kept.missing.substr(0, kept.missing.find('.'))), &kept);
}

void MaReader::tellUnresolved()
{
    std::size_t count = 0;
    const Kept* first = nullptr;
    for (const std::deque<Kept>* const list : {&keptHead, &keptBody, &keptTail}) {
        for (const Kept& kept : *list) {
            if (kept.missing.empty() || kept.usual)
                continue;
            ++count;
            if (!first || kept.statements.front().second < first->statements.front().second)
                first = &kept;
        }
    }
    if (first)
        notes.push_back(
            std::to_string(count) +
            " statements name what is not in the scene (or is there twice) and are kept as text; the "
            "first: line " +
            std::to_string(first->statements.front().second) + ", " + first->missing);
}

std::vector<std::string> MaReader::textsOf(std::deque<Kept>& kept)
{
    std::vector<std::string> texts;
    for (Kept& entry : kept) {
        // Such a connection came later in the file. Behind all of them the statement would undo it.
        if (entry.unlinked && graph.source(entry.unlinked->second) == entry.unlinked->first)
            continue;
        for (auto& [text, line] : entry.statements)
            texts.push_back(std::move(text));
    }
    return texts;
}

} // namespace host
