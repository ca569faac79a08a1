#include "UIDevice.h"

#include <cctype>

UIDevice& UIDevice::currentDevice()
{
    static UIDevice device;
    return device;
}

int compareVersionsNumerically(std::string_view a, std::string_view b)
{
    auto isDigit = [](char c) { return std::isdigit(static_cast<unsigned char>(c)) != 0; };
    std::size_t i = 0;
    std::size_t j = 0;
    while (i < a.size() && j < b.size()) {
        if (isDigit(a[i]) && isDigit(b[j])) {
            while (i < a.size() && a[i] == '0' && i + 1 < a.size() && isDigit(a[i + 1]))
                ++i;
            while (j < b.size() && b[j] == '0' && j + 1 < b.size() && isDigit(b[j + 1]))
                ++j;
            std::size_t endA = i;
            std::size_t endB = j;
            while (endA < a.size() && isDigit(a[endA]))
                ++endA;
            while (endB < b.size() && isDigit(b[endB]))
                ++endB;
            std::string_view runA = a.substr(i, endA - i);
            std::string_view runB = b.substr(j, endB - j);
            if (runA.size() != runB.size())
                return runA.size() < runB.size() ? -1 : 1;
            if (int order = runA.compare(runB); order != 0)
                return order < 0 ? -1 : 1;
            i = endA;
            j = endB;
        } else {
            if (a[i] != b[j])
                return a[i] < b[j] ? -1 : 1;
            ++i;
            ++j;
        }
    }
    if (i < a.size())
        return 1;
    if (j < b.size())
        return -1;
    return 0;
}
