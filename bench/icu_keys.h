// The peer for sort keys: ICU's collator for Lao.
#pragma once

#include <string>
#include <vector>

// Makes a key of each UTF-8 word, the way to UTF-16 inside: all bytes of the keys.
size_t MakeIcuKeys(const std::vector<std::string> &words);
