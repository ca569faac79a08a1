#include "ReferenceCases.h"

#include <charconv>
#include <cstdio>
#include <fstream>
#include <sstream>

namespace {

std::vector<std::string_view> splitTabs(std::string_view line)
{
    std::vector<std::string_view> fields;
    std::size_t start = 0;
    for (;;) {
        const std::size_t tab = line.find('\t', start);
        fields.push_back(line.substr(start, tab == std::string_view::npos ? tab : tab - start));
        if (tab == std::string_view::npos)
            return fields;
        start = tab + 1;
    }
}

template <typename Number> bool parseNumber(std::string_view text, Number& out)
{
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), out);
    return error == std::errc() && end == text.data() + text.size();
}

} // namespace

std::vector<ReferenceCase> parseReferenceCases(std::string_view text)
{
    std::vector<ReferenceCase> cases;
    std::istringstream lines{std::string(text)};
    std::string line;
    while (std::getline(lines, line)) {
        if (line.empty() || line[0] == '#')
            continue;
        const auto fields = splitTabs(line);
        if (fields.size() != 6)
            continue;
        ReferenceCase c;
        c.picture = fields[0];
        c.source = fields[1];
        if (fields[2] != "-")
            c.arguments = fields[2];
        c.sourceHash = fields[5];
        if (c.picture.empty() || c.source.empty() || !parseNumber(fields[3], c.channelTolerance)
            || !parseNumber(fields[4], c.allowedShare))
            continue;
        cases.push_back(std::move(c));
    }
    return cases;
}

std::vector<ReferenceCase> loadReferenceCases(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf();
    return parseReferenceCases(text.str());
}

std::string fnv1aHex(std::string_view bytes)
{
    std::uint64_t hash = 0xcbf29ce484222325ull;
    for (const unsigned char byte : bytes) {
        hash ^= byte;
        hash *= 0x100000001b3ull;
    }
    char text[17];
    std::snprintf(text, sizeof text, "%016llx", static_cast<unsigned long long>(hash));
    return text;
}

std::string evaluationText(const ReferenceCase& c, const std::string& script)
{
    if (c.arguments.empty())
        return script;
    return "(function" + script + ")" + c.arguments;
}
