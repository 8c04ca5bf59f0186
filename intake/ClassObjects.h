#pragma once
#include <windows.h>

// Makes the ShowMess class object reachable from other processes (local
// server, multiple use) for as long as the message loop runs.
HRESULT RegisterClassObjects();
// Withdraws it again; clients can then no longer create objects.
void RevokeClassObjects();
