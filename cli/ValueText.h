#pragma once

#include "platform/core/JSONString.h"
#include "platform/core/PlistValue.h"

#include <string>

// How the command prints a settings value: plainly for people, or as JSON for programs.
std::string plainText(const PlistValue& value);
std::string jsonText(const PlistValue& value);
