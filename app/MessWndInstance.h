#pragma once
#include "msgwnd/MessWnd.h"

// The process's one main window object.  Both intake roads reach it directly.
extern CMessWnd messWnd;
