#include "app/MessWndInstance.h"

CMessWnd messWnd;
