#include "intake/RegistryScript.h"

#include <cwctype>

namespace {

struct Token {
    std::wstring text;
    bool quoted = false;
    bool Is(const wchar_t* word) const { return !quoted && text == word; }
};

bool SameWordIgnoringCase(const std::wstring& a, const wchar_t* b)
{
    size_t i = 0;
    for (; i < a.size() && b[i] != L'\0'; ++i) {
        if (std::towupper(a[i]) != std::towupper(b[i]))
            return false;
    }
    return i == a.size() && b[i] == L'\0';
}

// Splits the text into words at white space; a quoted string is one word.
bool Tokenize(const std::wstring& script, std::vector<Token>& tokens, std::wstring& error)
{
    size_t i = 0;
    while (i < script.size()) {
        wchar_t c = script[i];
        if (std::iswspace(c)) {
            ++i;
            continue;
        }
        Token token;
        if (c == L'\'') {
            token.quoted = true;
            for (++i;; ++i) {
                if (i >= script.size()) {
                    error = L"unterminated quoted text";
                    return false;
                }
                if (script[i] == L'\'') {
                    if (i + 1 < script.size() && script[i + 1] == L'\'') {
                        token.text += L'\'';
                        ++i;
                        continue;
                    }
                    ++i;
                    break;
                }
                token.text += script[i];
            }
        } else {
            while (i < script.size() && !std::iswspace(script[i]))
                token.text += script[i++];
        }
        tokens.push_back(token);
    }
    return true;
}

class Parser {
public:
    Parser(const std::vector<Token>& tokens, std::wstring& error) : tokens_(tokens), error_(error) {}

    bool Script(std::vector<RegistryKeyEntry>& keys)
    {
        if (AtEnd() || !(SameWordIgnoringCase(Peek().text, L"HKCR") ||
                         SameWordIgnoringCase(Peek().text, L"HKEY_CLASSES_ROOT")))
            return Fail(L"the script must start with HKCR");
        ++pos_;
        if (!Expect(L"{") || !KeyList(keys, nullptr))
            return false;
        if (!AtEnd())
            return Fail(L"text after the end of the root");
        return true;
    }

private:
    // Keys (and, inside a key, "val" entries) up to the closing brace.
    bool KeyList(std::vector<RegistryKeyEntry>& keys, RegistryKeyEntry* owner)
    {
        for (;;) {
            if (AtEnd())
                return Fail(L"missing closing brace");
            if (Peek().Is(L"}")) {
                ++pos_;
                return true;
            }
            if (owner != nullptr && !Peek().quoted && SameWordIgnoringCase(Peek().text, L"val")) {
                ++pos_;
                std::wstring name, value;
                if (!Name(name) || !StringAssignment(value))
                    return false;
                owner->values.emplace_back(name, value);
                continue;
            }
            RegistryKeyEntry key;
            if (!Key(key))
                return false;
            keys.push_back(std::move(key));
        }
    }

    bool Key(RegistryKeyEntry& key)
    {
        if (!Peek().quoted && SameWordIgnoringCase(Peek().text, L"NoRemove")) {
            key.noRemove = true;
            ++pos_;
        } else if (!Peek().quoted && SameWordIgnoringCase(Peek().text, L"ForceRemove")) {
            key.forceRemove = true;
            ++pos_;
        }
        if (!Name(key.name))
            return false;
        if (!AtEnd() && Peek().Is(L"=")) {
            key.hasDefault = true;
            if (!StringAssignment(key.defaultValue))
                return false;
        }
        if (!AtEnd() && Peek().Is(L"{")) {
            ++pos_;
            return KeyList(key.subkeys, &key);
        }
        return true;
    }

    bool Name(std::wstring& name)
    {
        if (AtEnd() || (!Peek().quoted && (Peek().text == L"{" || Peek().text == L"}" ||
                                           Peek().text == L"=")))
            return Fail(L"a key or value name was expected");
        name = tokens_[pos_++].text;
        if (name.empty() || name.find(L'\\') != std::wstring::npos)
            return Fail(L"a key name must be one non-empty path part");
        return true;
    }

    // "= s 'text'": the only value type our scripts use is a string.
    bool StringAssignment(std::wstring& value)
    {
        if (!Expect(L"="))
            return false;
        if (AtEnd() || Peek().quoted || !SameWordIgnoringCase(Peek().text, L"s"))
            return Fail(L"only string values (s) are supported");
        ++pos_;
        if (AtEnd() || !Peek().quoted)
            return Fail(L"a quoted value was expected");
        value = tokens_[pos_++].text;
        return true;
    }

    bool Expect(const wchar_t* word)
    {
        if (AtEnd() || !Peek().Is(word))
            return Fail(std::wstring(L"expected ") + word);
        ++pos_;
        return true;
    }

    bool Fail(const std::wstring& what)
    {
        error_ = what + L" (at word " + std::to_wstring(pos_ + 1) + L")";
        return false;
    }

    bool AtEnd() const { return pos_ >= tokens_.size(); }
    const Token& Peek() const { return tokens_[pos_]; }

    const std::vector<Token>& tokens_;
    std::wstring& error_;
    size_t pos_ = 0;
};

std::wstring Child(const std::wstring& parent, const std::wstring& name)
{
    return parent.empty() ? name : parent + L"\\" + name;
}

void AddRegistration(const RegistryKeyEntry& key, const std::wstring& parent,
                     std::vector<RegistryOperation>& operations)
{
    std::wstring path = Child(parent, key.name);
    if (key.forceRemove)
        operations.push_back({RegistryOperation::DeleteTree, path, L"", L""});
    operations.push_back({RegistryOperation::CreateKey, path, L"", L""});
    if (key.hasDefault)
        operations.push_back({RegistryOperation::SetValue, path, L"", key.defaultValue});
    for (const auto& value : key.values)
        operations.push_back({RegistryOperation::SetValue, path, value.first, value.second});
    for (const auto& subkey : key.subkeys)
        AddRegistration(subkey, path, operations);
}

void AddRemoval(const RegistryKeyEntry& key, const std::wstring& parent,
                std::vector<RegistryOperation>& operations)
{
    std::wstring path = Child(parent, key.name);
    if (!key.noRemove) {
        operations.push_back({RegistryOperation::DeleteTree, path, L"", L""});
        return;
    }
    for (const auto& subkey : key.subkeys)
        AddRemoval(subkey, path, operations);
}

} // namespace

std::wstring ExpandModulePath(const std::wstring& script, const std::wstring& modulePath)
{
    static const std::wstring marker = L"%MODULE%";
    std::wstring quotedPath;
    for (wchar_t c : modulePath) {
        quotedPath += c;
        if (c == L'\'')
            quotedPath += L'\'';
    }
    std::wstring result;
    for (size_t i = 0; i < script.size();) {
        if (script.compare(i, marker.size(), marker) == 0) {
            result += quotedPath;
            i += marker.size();
        } else if (script.compare(i, 2, L"%%") == 0) {
            result += L'%';
            i += 2;
        } else {
            result += script[i++];
        }
    }
    return result;
}

bool ParseRegistryScript(const std::wstring& script, std::vector<RegistryKeyEntry>& keys,
                         std::wstring& error)
{
    std::vector<Token> tokens;
    if (!Tokenize(script, tokens, error))
        return false;
    keys.clear();
    return Parser(tokens, error).Script(keys);
}

std::vector<RegistryOperation> RegistrationOperations(const std::vector<RegistryKeyEntry>& keys)
{
    std::vector<RegistryOperation> operations;
    for (const auto& key : keys)
        AddRegistration(key, L"", operations);
    return operations;
}

std::vector<RegistryOperation> RemovalOperations(const std::vector<RegistryKeyEntry>& keys)
{
    std::vector<RegistryOperation> operations;
    for (const auto& key : keys)
        AddRemoval(key, L"", operations);
    return operations;
}
