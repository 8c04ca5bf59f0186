#pragma once
#include <string>
#include <vector>

// The registration scripts the program carries as resources, in the small
// text form COM servers traditionally use:
//
//   HKCR
//   {
//       NoRemove CLSID
//       {
//           ForceRemove {guid} = s 'Name'
//           {
//               LocalServer32 = s '%MODULE%'
//               val AppID = s '{guid}'
//           }
//       }
//   }
//
// Only what our scripts need is understood: the classes root, nested keys
// with an optional string default value, named string values ("val"), and
// the NoRemove and ForceRemove flags.  Names and values are single-quoted
// ('' stands for one quote) or bare words.  Reading a script touches no
// registry; it yields the operations that registering or removing it means.

struct RegistryKeyEntry {
    std::wstring name;
    bool noRemove = false;     // kept on removal (its subkeys are still visited)
    bool forceRemove = false;  // deleted whole before it is written again
    bool hasDefault = false;
    std::wstring defaultValue;
    std::vector<std::pair<std::wstring, std::wstring>> values;  // "val" name, text
    std::vector<RegistryKeyEntry> subkeys;
};

struct RegistryOperation {
    enum Kind { CreateKey, SetValue, DeleteTree };
    Kind kind;
    std::wstring key;    // path below the classes root
    std::wstring name;   // SetValue: value name, empty for the default value
    std::wstring value;  // SetValue: the text

    bool operator==(const RegistryOperation& other) const
    {
        return kind == other.kind && key == other.key && name == other.name && value == other.value;
    }
};

// Replaces every %MODULE% with `modulePath`, quotes doubled so that the path
// can stand inside a quoted value; "%%" is one percent sign.
std::wstring ExpandModulePath(const std::wstring& script, const std::wstring& modulePath);

// Reads the keys below the HKCR root.  False (and `error` says where) when
// the text is not a script of the supported form.
bool ParseRegistryScript(const std::wstring& script, std::vector<RegistryKeyEntry>& keys,
                         std::wstring& error);

// Registering: each key is created and its values written, parents first; a
// ForceRemove key is deleted before it is written.
std::vector<RegistryOperation> RegistrationOperations(const std::vector<RegistryKeyEntry>& keys);

// Removing: every key not marked NoRemove goes with everything below it;
// NoRemove keys stay and only their listed subkeys are removed.
std::vector<RegistryOperation> RemovalOperations(const std::vector<RegistryKeyEntry>& keys);
