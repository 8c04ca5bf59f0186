#pragma once
#include <windows.h>

// Rules for the save directory the user types: trimming, the characters a
// folder name may not hold, and the one canonical form every accepted path
// is stored in.  Both kinds of slash separate components.

// Removes leading and trailing white space from `text` in place.
void TrimSpaces(wchar_t* text);

// True when `text` is not empty and holds none of : * ? " < > | \ /.
bool IsValidPathComponent(const wchar_t* text);

// Rewrites the absolute path `fullPath` into `result` as a drive letter and
// colon (or the two leading backslashes of a network path) followed by each
// component, trimmed, after one backslash.  An empty component ends the
// path.  False when the path has no drive or server part, or a component
// is not a valid folder name.
bool CanonicalSavePath(const wchar_t* fullPath, wchar_t (&result)[MAX_PATH]);

// Makes the 260-unit `path` absolute against the current directory (which
// also resolves "." and "..") and canonical, in place.  1 on success; 0 when
// the path is unusable, which leaves it as it was.
int NormalizeSavePath(wchar_t* path);

// Whether two save directories are the same one: equal ignoring case.
bool SameSaveDirectory(const wchar_t* a, const wchar_t* b);
