#include "ConformanceTally.h"

#include <algorithm>
#include <iomanip>
#include <sstream>

namespace {

std::vector<std::string> splitFields(std::string_view line)
{
    std::vector<std::string> fields;
    std::size_t start = 0;
    for (;;) {
        const std::size_t tab = line.find('\t', start);
        if (tab == std::string_view::npos || fields.size() == 2) {
            fields.emplace_back(line.substr(start));
            return fields;
        }
        fields.emplace_back(line.substr(start, tab - start));
        start = tab + 1;
    }
}

std::string areaOf(const std::string& file)
{
    const auto slash = file.find('/');
    return slash == std::string::npos ? "(top)" : file.substr(0, slash);
}

std::string joinCounts(const std::map<std::string, int>& counts)
{
    std::vector<std::pair<std::string, int>> sorted(counts.begin(), counts.end());
    std::stable_sort(sorted.begin(), sorted.end(), [](auto& a, auto& b) { return a.second > b.second; });
    std::string text;
    for (const auto& [reason, count] : sorted)
        text += (text.empty() ? "" : ", ") + std::to_string(count) + " " + reason;
    return text.empty() ? "none" : text;
}

} // namespace

void ConformanceTally::add(const std::string& file, std::string_view results)
{
    Counts& counts = areas_[areaOf(file)];
    std::vector<std::vector<std::string>> lines;
    std::istringstream stream{std::string(results)};
    for (std::string line; std::getline(stream, line);) {
        if (!line.empty())
            lines.push_back(splitFields(line));
    }
    if (lines.empty())
        lines.push_back({"FAIL", "(no result)", "the harness reported nothing"});
    for (const auto& fields : lines) {
        const std::string& status = fields[0];
        const std::string name = fields.size() > 1 ? fields[1] : "";
        const std::string message = fields.size() > 2 ? fields[2] : "";
        if (status == "PASS") {
            ++counts.pass;
        } else if (status == "SKIP" && lines.size() == 1 && message.empty()) {
            ++skippedFiles_[name];
        } else if (status == "SKIP") {
            ++skippedTests_[message];
        } else {
            ++counts.fail;
            failures_.push_back({file, name, status == "FAIL" ? message : "unexpected line: " + status});
        }
    }
}

int ConformanceTally::passed() const
{
    int total = 0;
    for (const auto& [area, counts] : areas_)
        total += counts.pass;
    return total;
}

int ConformanceTally::failed() const
{
    int total = 0;
    for (const auto& [area, counts] : areas_)
        total += counts.fail;
    return total;
}

double ConformanceTally::passRate() const
{
    const int counted = passed() + failed();
    return counted ? 100.0 * passed() / counted : 0.0;
}

void ConformanceTally::print(std::ostream& out) const
{
    out << "canvas conformance: " << engine_ << "\n";
    out << "  " << std::left << std::setw(34) << "area" << std::right << " " << std::setw(6) << "pass"
        << " " << std::setw(6) << "fail" << " " << std::setw(7) << "rate" << "\n";
    for (const auto& [area, counts] : areas_) {
        if (counts.pass + counts.fail == 0)
            continue;
        out << "  " << std::left << std::setw(34) << area << std::right << " " << std::setw(6) << counts.pass
            << " " << std::setw(6) << counts.fail << " " << std::setw(6) << std::fixed << std::setprecision(1)
            << 100.0 * counts.pass / (counts.pass + counts.fail) << "%\n";
    }
    int skipped = 0;
    for (const auto& [reason, count] : skippedFiles_)
        skipped += count;
    out << "skipped " << skipped << " files: " << joinCounts(skippedFiles_) << "\n";
    if (!skippedTests_.empty())
        out << "skipped tests inside counted files: " << joinCounts(skippedTests_) << "\n";
    out << "conformance: " << passed() << " of " << passed() + failed() << " synchronous tests pass ("
        << std::fixed << std::setprecision(1) << passRate() << "%)\n";
}

void ConformanceTally::writeFailures(std::ostream& out) const
{
    out << "# failures of " << engine_ << "\n";
    std::string current;
    for (const auto& failure : failures_) {
        const std::string area = areaOf(failure.file);
        if (area != current) {
            current = area;
            out << "\n## " << area << "\n";
        }
        const std::string inArea = failure.file.size() > area.size() ? failure.file.substr(area.size() + 1) : failure.file;
        out << "- " << inArea << ": " << failure.name << ": " << failure.message << "\n";
    }
}
