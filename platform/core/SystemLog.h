#pragma once

#include <functional>
#include <string>

// Diagnostic lines for the system log. Lines of this system begin with "AMPW:".
void systemLog(const std::string& line);

// Receives every logged line as well (tests, and the command's --verbose); empty to stop.
void setSystemLogObserver(std::function<void(const std::string&)> observer);
