// The peer for sort keys: tertiary keys of a collator for Lao.
#pragma once

#include <string>
#include <vector>

// Bytes of all keys.
size_t MakeIcuKeys(const std::vector<std::u16string> &words);
size_t MakeIcuKeysFromUtf8(const std::vector<std::string> &words);

std::u16string Utf16Of(const std::string &text);
