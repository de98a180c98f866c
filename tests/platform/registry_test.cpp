// Keys, values, results and sizes of the registry, on both targets.
#include <gtest/gtest.h>

#include "support/temp_folder.h"
#include "testing/testing.h"

static const std::string kBase = "Software\\OrvelPlatformTest";

static LONG Create(HKEY parent, const std::string &subKey, HKEY *key)
{
    return RegCreateKeyExA(parent, subKey.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, key,
                           nullptr);
}

static LONG Open(HKEY parent, const char *subKey)
{
    HKEY key = nullptr;
    LONG result = RegOpenKeyExA(parent, subKey, 0, KEY_READ, &key);
    EXPECT_NE(RegSetValueExA(key, "v", 0, REG_BINARY, nullptr, 0), 0) << "only for reading";
    RegCloseKey(key);
    return result;
}

static LONG Set(HKEY key, const char *name, const std::string &data, DWORD type = REG_BINARY)
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
    void SetUp() override { ASSERT_EQ(Create(HKEY_CURRENT_USER, kBase, &key), 0); }
    void TearDown() override
    {
        RegCloseKey(key);
        for (const char *inner : {"\\a\\b", "\\a", ""})
            RemoveRegistryKey(HKEY_CURRENT_USER, (kBase + inner).c_str());
    }
    HKEY key;
};

// Each value has a name that its file must take care with.
TEST_F(Registry, SizesAndResultsOfAQuery)
{
    const std::string five("\1\2\0\xFF\n", 5), large(100000, 'l');
    const std::string odd("\"\\\n\r%41\xE9\x80]\0", 11);
    struct Row {
        const char *name;
        DWORD type;
        std::string stored;
        DWORD room;
        LONG result;
        DWORD size;
        std::string read;  // the room afterwards
    } const rows[] = {
        {"State", REG_BINARY, five, 5, 0, 5, five},
        {"back\\slash", REG_BINARY, five, 7, 0, 5, five + "##"},
        {"%41", REG_BINARY, five, 4, ERROR_MORE_DATA, 5, "####"},
        {"a]b", REG_BINARY, five, 0, ERROR_MORE_DATA, 5, ""},
        {"", REG_BINARY, "", 3, 0, 0, "###"},
        {"=", REG_BINARY, large, 100000, 0, 100000, large},
        {"\"quoted\"", REG_DWORD, "\x2A", 4, 0, 1, "\x2A###"},
        {"text", REG_SZ, std::string("ab\0", 3), 2, ERROR_MORE_DATA, 3, "##"},
        {"unended text", REG_SZ, "ab", 4, 0, 3, std::string("ab\0#", 4)},
        {"text longer by its end", REG_SZ, std::string("abc"), 3, ERROR_MORE_DATA, 4, "###"},
        {"two texts", REG_SZ, std::string("a\0b\0", 4), 4, 0, 4, std::string("a\0b\0", 4)},
        {"odd bytes", REG_SZ, odd, 11, 0, 11, odd},
    };
    for (const Row &row : rows) {
        SCOPED_TRACE(row.name);
        ASSERT_EQ(Set(key, row.name, row.stored, row.type), 0);
        Answer answer = Query(key, row.name, row.room);
        EXPECT_EQ(answer.result, row.result);
        EXPECT_EQ(answer.type, row.type);
        EXPECT_EQ(answer.size, row.size);
        EXPECT_EQ(answer.data, row.read);
        DWORD size = 1;
        EXPECT_EQ(RegQueryValueExA(key, row.name, nullptr, nullptr, nullptr, &size), 0);
        EXPECT_EQ(size, row.size);
    }
    EXPECT_EQ(Query(key, "STATE", 5).data, five) << "names keep their case and ignore it";
    EXPECT_EQ(Query(key, nullptr, 0).result, 0) << "no name is the empty one";
}

TEST_F(Registry, KeysAreMadeWithThoseAboveAndHandlesMayOutliveThem)
{
    HKEY inner;
    EXPECT_EQ(Open(key, "a\\b"), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(Create(key, "a\\b\\", &inner), 0);
    RegCloseKey(inner);
    EXPECT_EQ(Create(key, "A", &inner), 0);
    EXPECT_EQ(Open(key, "aa"), ERROR_FILE_NOT_FOUND) << "a neighbour with the same start";
    EXPECT_EQ(Set(inner, "v", "a"), 0);
    EXPECT_EQ(Query(key, "v", 1).result, ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(Open(key, "") + Open(key, nullptr) +
                  Open(HKEY_CURRENT_USER, "SOFTWARE\\orvelplatformtest"),
              0);
    BYTE byte;
    EXPECT_EQ(RegQueryValueExA(inner, "v", nullptr, nullptr, &byte, nullptr),
              ERROR_INVALID_PARAMETER);
    for (const char *gone : {"\\a\\b", "\\a"})
        RemoveRegistryKey(HKEY_CURRENT_USER, (kBase + gone).c_str());
    EXPECT_EQ(Query(inner, "v", 1).result, ERROR_KEY_DELETED);
    EXPECT_EQ(Set(inner, "v", "a"), ERROR_KEY_DELETED);
    EXPECT_EQ(RegCloseKey(inner), 0);
    EXPECT_EQ(RegCloseKey(inner), ERROR_INVALID_HANDLE);
    EXPECT_EQ(Query(inner, "v", 1).result, ERROR_INVALID_HANDLE);
    EXPECT_EQ(Open(nullptr, "a"), ERROR_INVALID_HANDLE);
}
