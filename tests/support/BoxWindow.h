#pragma once

#include <windows.h>

#include <string>
#include <vector>

// A message box as a window.

namespace tavio::test {

inline constexpr int kBoxText = 0xFFFF;  // the control that holds its text

std::wstring TextOf(HWND window);

// The buttons that are there, by number, from left to right.
std::vector<int> ButtonsOf(HWND box);

// The button that Enter presses.
int DefaultButtonOf(HWND box, const std::vector<int>& buttons);

}  // namespace tavio::test
