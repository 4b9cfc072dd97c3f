#include "layers/layerArguments.h"

#include <maya/MArgList.h>

#include <cctype>
#include <cstdlib>
#include <stdexcept>
#include <vector>

namespace layers {

namespace {

struct Flag {
    const char* shortName;
    const char* longName;
    bool takesValueInQuery;
    bool takesValueInEdit;
};

const Flag kFlags[] = {
    {"-ll", "-layerList", false, false},   {"-id", "-layerId", true, true},
    {"-pt", "-paintTarget", true, true},   {"-vw", "-vertexWeights", false, true},
    {"-vc", "-vertexCount", false, false}, {"-at", "-attach", false, false},
    {"-al", "-addLayer", false, true},     {"-rl", "-removeLayer", false, false},
    {"-n", "-name", false, true},          {"-p", "-parent", false, true},
    {"-o", "-opacity", false, true},       {"-mis", "-misbehave", true, true},
};

const Flag& flagNamed(const std::string& name)
{
    for (const Flag& flag : kFlags) {
        if (name == flag.shortName || name == flag.longName)
            return flag;
    }
    throw std::runtime_error("Invalid flag '" + name + "'.");
}

bool looksLikeFlag(const std::string& text)
{
    return text.size() > 1 && text[0] == '-' && std::isalpha(static_cast<unsigned char>(text[1]));
}

/// The whole text as a number.
double numberOf(const MString& text, const char* flag)
{
    char* end = nullptr;
    const double value = std::strtod(text.asChar(), &end);
    if (end == text.asChar() || *end != '\0')
        throw std::runtime_error(std::string("-") + flag + " needs a number.");
    return value;
}

LayerArguments::Mode modeOf(const std::vector<MString>& words)
{
    LayerArguments::Mode mode = LayerArguments::kPlain;
    for (const MString& word : words) {
        if (word == "-q" || word == "-query")
            mode = LayerArguments::kQuery;
        else if (word == "-e" || word == "-edit")
            mode = LayerArguments::kEdit;
    }
    return mode;
}

} // namespace

const MString& LayerArguments::text(const char* flag) const
{
    const auto found = values.find(flag);
    if (found == values.end())
        throw std::runtime_error(std::string("-") + flag + " is missing.");
    return found->second;
}

int LayerArguments::integer(const char* flag) const
{
    return static_cast<int>(numberOf(text(flag), flag));
}

double LayerArguments::real(const char* flag) const
{
    return numberOf(text(flag), flag);
}

LayerArguments sortArguments(const MArgList& list)
{
    std::vector<MString> words;
    for (unsigned int place = 0; place < list.length(); ++place)
        words.push_back(list.asString(place));
    LayerArguments sorted;
    sorted.mode = modeOf(words);
    for (std::size_t place = 0; place < words.size(); ++place) {
        const MString& word = words[place];
        if (word == "-q" || word == "-query" || word == "-e" || word == "-edit")
            continue;
        if (!looksLikeFlag(word.asChar())) {
            if (sorted.object.length() != 0)
                throw std::runtime_error("Only one object is taken.");
            sorted.object = word;
            continue;
        }
        const Flag& flag = flagNamed(word.asChar());
        const bool takesValue =
            sorted.mode == LayerArguments::kQuery ? flag.takesValueInQuery : flag.takesValueInEdit;
        MString& value = sorted.values[flag.longName + 1];
        if (!takesValue)
            continue;
        if (++place == words.size())
            throw std::runtime_error(std::string(flag.longName) + " needs a value.");
        value = std::move(words[place]);
    }
    return sorted;
}

} // namespace layers
