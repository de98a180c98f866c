// Keys, values, results and sizes of the registry.
#include <cstring>
#include <gtest/gtest.h>

#include "support/temp_folder.h"

static const char kBase[] = "Software\\OrvelPlatformTest";

static HKEY Create(const std::string &subKey, REGSAM access = KEY_ALL_ACCESS)
{
    HKEY key = nullptr;
    EXPECT_EQ(RegCreateKeyExA(HKEY_CURRENT_USER, subKey.c_str(), 0, nullptr, 0, access, nullptr,
                              &key, nullptr),
              ERROR_SUCCESS);
    return key;
}

static LONG Open(HKEY parent, const char *subKey, REGSAM access = KEY_READ)
{
    HKEY key = nullptr;
    LONG result = RegOpenKeyExA(parent, subKey, 0, access, &key);
    if (result == ERROR_SUCCESS)
        RegCloseKey(key);
    return result;
}

static LONG Set(HKEY key, const char *name, DWORD type, const std::string &data)
{
    return RegSetValueExA(key, name, 0, type, reinterpret_cast<const BYTE *>(data.c_str()),
                          DWORD(data.size()));
}

// What a query with this much room gives; the room behind is checked to be untouched.
struct Answer {
    LONG result;
    DWORD type, size;
    std::string data;
};

static Answer Query(HKEY key, const char *name, DWORD room)
{
    Answer answer = {0, 0xdead, room, std::string(room + 8, '#')};
    BYTE *data = reinterpret_cast<BYTE *>(answer.data.data());
    answer.result = RegQueryValueExA(key, name, nullptr, &answer.type, data, &answer.size);
    EXPECT_EQ(answer.data.substr(room), "########");
    answer.data.resize(room);
    return answer;
}

class Registry : public testing::Test
{
  protected:
    void SetUp() override { key = Create(kBase); }
    void TearDown() override
    {
        RegCloseKey(key);
        for (const char *inner : {"\\a\\b", "\\a", ""})
            RegDeleteKeyA(HKEY_CURRENT_USER, (kBase + std::string(inner)).c_str());
    }
    HKEY key;
};

TEST_F(Registry, SizesAndResultsOfAQuery)
{
    const std::string five("\1\2\0\xFF\n", 5);
    struct Row {
        const char *what;
        DWORD type;
        std::string stored;
        DWORD room;
        LONG result;
        DWORD size;
        std::string read;  // the room afterwards
    } const rows[] = {
        {"exact", REG_BINARY, five, 5, 0, 5, five},
        {"roomy", REG_BINARY, five, 7, 0, 5, five + "##"},
        {"too small", REG_BINARY, five, 4, ERROR_MORE_DATA, 5, "####"},
        {"no room", REG_BINARY, five, 0, ERROR_MORE_DATA, 5, ""},
        {"empty", REG_BINARY, "", 3, 0, 0, "###"},
        {"number", REG_DWORD, std::string("\x2A\0\0\x80", 4), 4, 0, 4,
         std::string("\x2A\0\0\x80", 4)},
        {"number cut", REG_DWORD, "\x2A", 4, 0, 1, "\x2A###"},
        {"text", REG_SZ, std::string("ab\0", 3), 3, 0, 3, std::string("ab\0", 3)},
        {"text, no room", REG_SZ, std::string("ab\0", 3), 2, ERROR_MORE_DATA, 3, "##"},
        {"text, end not counted", REG_SZ, "ab", 4, 0, 3, std::string("ab\0#", 4)},
        {"text, two ends", REG_SZ, std::string("ab\0\0", 4), 4, 0, 4, std::string("ab\0\0", 4)},
        {"text, end inside", REG_SZ, std::string("a\0b\0", 4), 4, 0, 4, std::string("a\0b\0", 4)},
        {"text, empty", REG_SZ, std::string("\0", 1), 2, 0, 1, std::string("\0#", 2)},
        {"text, odd bytes", REG_SZ, std::string("\"\\\n\r%41\xE9\x80]\0", 11), 11, 0, 11,
         std::string("\"\\\n\r%41\xE9\x80]\0", 11)},
    };
    for (const Row &row : rows) {
        ASSERT_EQ(Set(key, "v", row.type, row.stored), 0) << row.what;
        Answer answer = Query(key, "V", row.room);
        EXPECT_EQ(answer.result, row.result) << row.what;
        EXPECT_EQ(answer.type, row.type) << row.what;
        EXPECT_EQ(answer.size, row.size) << row.what;
        EXPECT_EQ(answer.data, row.read) << row.what;
        DWORD size = 1;
        EXPECT_EQ(RegQueryValueExA(key, "v", nullptr, nullptr, nullptr, &size), 0) << row.what;
        EXPECT_EQ(size, row.size) << row.what;
        EXPECT_EQ(RegQueryValueExA(key, "v", nullptr, nullptr, nullptr, nullptr), 0) << row.what;
    }
}

// A text that was stored without its end gets one from the room that is left.
TEST_F(Registry, UnendedTextIsEndedWhereThereIsRoom)
{
    char unended[] = {'a', 'b', 'c'};
    ASSERT_EQ(RegSetValueExA(key, "v", 0, REG_SZ, reinterpret_cast<BYTE *>(unended), 2), 0);
    Answer answer = Query(key, "v", 4);
    EXPECT_EQ(answer.size, 2u);
    EXPECT_EQ(answer.data, std::string("ab\0#", 4));
    answer = Query(key, "v", 2);
    EXPECT_EQ(answer.result, 0);
    EXPECT_EQ(answer.data, "ab");
}

TEST_F(Registry, RefusedQuestions)
{
    DWORD reserved = 0, size = 4;
    BYTE data[4];
    Set(key, "v", REG_BINARY, "ab");
    EXPECT_EQ(RegQueryValueExA(key, "absent", nullptr, nullptr, data, &size), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(RegQueryValueExA(key, nullptr, nullptr, nullptr, data, &size), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(RegQueryValueExA(key, "v", &reserved, nullptr, data, &size), ERROR_INVALID_PARAMETER);
    EXPECT_EQ(RegQueryValueExA(key, "v", nullptr, nullptr, data, nullptr), ERROR_INVALID_PARAMETER);
    EXPECT_EQ(RegDeleteValueA(key, "absent"), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(RegDeleteKeyA(HKEY_CURRENT_USER, nullptr), ERROR_INVALID_PARAMETER);
}

TEST_F(Registry, NamesKeepTheirCaseAndIgnoreIt)
{
    const char *names[] = {"State", "with space", "\"quoted\"", "back\\slash",
                           "%41",   "a]b",        "=",          ""};
    BYTE number = 0;
    for (const char *name : names)
        EXPECT_EQ(Set(key, name, REG_BINARY, std::string(1, char(++number))), 0) << name;
    number = 0;
    for (const char *name : names)
        EXPECT_EQ(Query(key, name, 1).data, std::string(1, char(++number))) << name;
    EXPECT_EQ(Set(key, "STATE", REG_BINARY, "n"), 0);
    EXPECT_EQ(Query(key, "state", 1).data, "n");
    EXPECT_EQ(Query(key, nullptr, 1).data, "\x08");
    EXPECT_EQ(RegDeleteValueA(key, "sTATE"), 0);
    EXPECT_EQ(Query(key, "State", 1).result, ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(Query(key, "%41", 1).data, "\x05");
    EXPECT_EQ(Open(HKEY_CURRENT_USER, "SOFTWARE\\orvelplatformtest"), 0);
}

TEST_F(Registry, RightsOfAHandleHold)
{
    Set(key, "v", REG_BINARY, "a");
    struct Row {
        REGSAM access;
        LONG query, set, remove;
    } const rows[] = {
        {KEY_READ, 0, ERROR_ACCESS_DENIED, ERROR_ACCESS_DENIED},
        {KEY_QUERY_VALUE, 0, ERROR_ACCESS_DENIED, ERROR_ACCESS_DENIED},
        {KEY_WRITE, ERROR_ACCESS_DENIED, 0, 0},
        {KEY_SET_VALUE, ERROR_ACCESS_DENIED, 0, 0},
        {KEY_ALL_ACCESS, 0, 0, 0},
    };
    for (const Row &row : rows) {
        HKEY opened, created = nullptr;
        ASSERT_EQ(RegOpenKeyExA(HKEY_CURRENT_USER, kBase, 0, row.access, &opened), 0);
        EXPECT_EQ(Query(opened, "v", 1).result, row.query) << row.access;
        EXPECT_EQ(Set(opened, "w", REG_BINARY, "b"), row.set) << row.access;
        EXPECT_EQ(RegDeleteValueA(opened, "w"), row.remove) << row.access;
        EXPECT_EQ(RegCreateKeyExA(opened, "a", 0, nullptr, 0, KEY_READ, nullptr, &created, nullptr),
                  0)
            << row.access;
        RegCloseKey(created);
        RegDeleteKeyA(key, "a");
        RegCloseKey(opened);
    }
    EXPECT_EQ(Query(key, "v", 1).data, "a");
}

TEST_F(Registry, KeysAreMadeWithThoseAboveAndGoFromBelow)
{
    HKEY inner;
    DWORD disposition = 0;
    EXPECT_EQ(Open(key, "a\\b"), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(
        RegCreateKeyExA(key, "a\\b\\", 0, nullptr, 0, KEY_READ, nullptr, &inner, &disposition), 0);
    EXPECT_EQ(disposition, DWORD(REG_CREATED_NEW_KEY));
    RegCloseKey(inner);
    EXPECT_EQ(RegCreateKeyExA(key, "A", 0, nullptr, 0, KEY_READ, nullptr, &inner, &disposition), 0);
    EXPECT_EQ(disposition, DWORD(REG_OPENED_EXISTING_KEY));
    RegCloseKey(inner);
    EXPECT_EQ(RegDeleteKeyA(key, "a"), ERROR_ACCESS_DENIED);
    EXPECT_EQ(RegDeleteKeyA(key, "a\\b"), 0);
    EXPECT_EQ(Open(key, "a"), 0);
    EXPECT_EQ(RegDeleteKeyA(key, "a"), 0);
    EXPECT_EQ(RegDeleteKeyA(key, "a"), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(Open(key, "a"), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(Open(key, ""), 0);
    EXPECT_EQ(Open(key, nullptr), 0);
}

TEST_F(Registry, NeighboursWithTheSameStartAreOthers)
{
    HKEY inner = Create(std::string(kBase) + "\\a");
    EXPECT_EQ(Open(key, "aa"), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(Set(inner, "v", REG_BINARY, "a"), 0);
    EXPECT_EQ(Query(key, "v", 1).result, ERROR_FILE_NOT_FOUND);
    RegCloseKey(inner);
}

TEST_F(Registry, HandlesOfGoneKeysAreRecognised)
{
    HKEY inner = Create(std::string(kBase) + "\\a");
    EXPECT_EQ(RegDeleteKeyA(key, "a"), 0);
    EXPECT_EQ(Query(inner, "v", 1).result, ERROR_KEY_DELETED);
    EXPECT_EQ(Set(inner, "v", REG_BINARY, "a"), ERROR_KEY_DELETED);
    EXPECT_EQ(RegDeleteValueA(inner, "v"), ERROR_KEY_DELETED);
    EXPECT_EQ(RegCloseKey(inner), 0);
    EXPECT_EQ(RegCloseKey(inner), ERROR_INVALID_HANDLE);
    EXPECT_EQ(Query(inner, "v", 1).result, ERROR_INVALID_HANDLE);
    EXPECT_EQ(Set(nullptr, "v", REG_BINARY, "a"), ERROR_INVALID_HANDLE);
    EXPECT_EQ(Open(nullptr, "a"), ERROR_INVALID_HANDLE);
}

TEST_F(Registry, LongestNameOfAKey)
{
    std::string longest(255, 'k');
    HKEY inner = nullptr;
    EXPECT_EQ(
        RegCreateKeyExA(key, longest.c_str(), 0, nullptr, 0, KEY_READ, nullptr, &inner, nullptr),
        0);
    RegCloseKey(inner);
    EXPECT_EQ(RegDeleteKeyA(key, longest.c_str()), 0);
}

TEST_F(Registry, ClassesAreAPartOfTheMachine)
{
    HKEY made, seen;
    ASSERT_EQ(RegCreateKeyExA(HKEY_CLASSES_ROOT, "OrvelTestClass", 0, nullptr, 0, KEY_ALL_ACCESS,
                              nullptr, &made, nullptr),
              0);
    EXPECT_EQ(Set(made, "v", REG_BINARY, "c"), 0);
    EXPECT_EQ(
        RegOpenKeyExA(HKEY_LOCAL_MACHINE, "Software\\Classes\\OrvelTestClass", 0, KEY_READ, &seen),
        0);
    EXPECT_EQ(Query(seen, "v", 1).data, "c");
    RegCloseKey(seen);
    RegCloseKey(made);
    EXPECT_EQ(RegDeleteKeyA(HKEY_CLASSES_ROOT, "OrvelTestClass"), 0);
}

TEST_F(Registry, LargeValueComesBack)
{
    std::string large;
    for (int i = 0; i < 100000; i++)
        large += char(i * 7);
    ASSERT_EQ(Set(key, "large", REG_BINARY, large), 0);
    Answer answer = Query(key, "large", DWORD(large.size()));
    EXPECT_EQ(answer.result, 0);
    EXPECT_TRUE(answer.data == large);
    EXPECT_EQ(Set(key, "text", REG_SZ, std::string(70000, 't')), 0);
    EXPECT_EQ(Query(key, "text", 10).size, 70001u);
}
