#pragma once
#include <windows.h>

// From now on, every message box of the calling thread is answered as soon
// as it opens and its text recorded for FuzzBoxes().
void AnswerBoxes();
// Before each input: the boxes of the last one are forgotten.
void ForgetBoxes();
