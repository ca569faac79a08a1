#pragma once

// Lets assistive technology read every settings row as a list item named after its label
// with its value (a switch's state, a slider's or list's value). Installed once.
void installAccessibility();
