#pragma once

#include <windows.h>

// winuser.h has macros of these names, which would rename members of ours.
#undef GetMessage
#undef GetProp
#undef SendMessage
