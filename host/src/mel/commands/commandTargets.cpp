#include "mel/commands/commandTargets.h"

#include "graph/graph.h"
#include "mel/command.h"
#include "selection/selectionState.h"
#include "session.h"
#include "types/error.h"

namespace host {

SelectionList commandTargets(Session& session, const std::vector<std::string>& names)
{
    if (names.empty()) {
        const SelectionList& active = session.selection().active();
        if (active.items.empty())
            throw Error("Nothing is selected.");
        return active;
    }
    SelectionList list;
    for (const std::string& name : names)
        list.addPattern(session.graph(), name);
    return list;
}

std::vector<double> leadingNumbers(const mel::Args& args, std::size_t numbers)
{
    const std::vector<mel::Value>& words = args.objects();
    if (words.size() < numbers)
        throw Error(args.commandName() + " needs " + std::to_string(numbers) + " numbers.");
    std::vector<double> values;
    for (std::size_t k = 0; k < numbers; ++k) {
        bool whole = true;
        const double value =
            words[k].isNumber() ? words[k].toFloat() : mel::parseNumber(words[k].toString(), &whole);
        if (!whole)
            throw Error(args.commandName() + ": '" + words[k].toString() + "' is no number.");
        values.push_back(value);
    }
    return values;
}

std::vector<std::string> namesAfter(const mel::Args& args, std::size_t numbers)
{
    std::vector<std::string> names = args.objectNames();
    names.erase(names.begin(), names.begin() + static_cast<std::ptrdiff_t>(std::min(numbers, names.size())));
    return names;
}

DagNode& transformOf(const SelectionItem& item)
{
    DagNode* dag = item.node ? item.node->asDag() : nullptr;
    if (dag && dag->isShape())
        dag = dag->parent();
    if (!dag)
        throw Error("No transform: " + (item.node ? item.node->uniqueName() : std::string("(empty)")));
    return *dag;
}

} // namespace host
