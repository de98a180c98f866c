// What all tests share: files of the data folder, the corpus, lines, bytes as numbers, and numbers
// that look random.
#pragma once

#include <cstdint>
#include <string>
#include <vector>
#include <windows.h>

// A path in the data folder, with backslashes; the folder is made.
std::string DataPath(const std::string &name);
void WriteDataFile(const std::string &name, const std::string &content);
std::string ReadDataFile(const std::string &name);
void RemoveDataFile(const std::string &name);

// A value of the registry; its key is made.
void StoreRegistryValue(HKEY root, const char *path, const char *name, DWORD type,
                        const std::string &data);

// Real Lao text in UTF-8.
inline const char *const kCorpusFiles[] = {"udhr.txt", "cldr_annotations.txt", "web_phrases.txt"};
std::string ReadCorpus(const char *name);

std::vector<WCHAR> WideOf(const std::string &utf8);
std::vector<std::string> SplitLines(const std::string &text);

// Bytes of the internal code, drawn: "161 190 | 173" with | for the break mark.
std::string ShowCode(const std::string &code);

// The same in each run.
uint32_t NextRandom();
