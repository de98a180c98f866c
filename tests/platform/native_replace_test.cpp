// Replacing files on the native target: what may be in the way, and what of the old file is kept.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "platform/native_support.h"

class NativeReplacedFile : public testing::Test
{
  protected:
    void SetUp() override { ASSERT_EQ(Replace(path, "old"), 1); }
    static int Replace(const std::string &path, const std::string &text)
    {
        FILE *file = BeginReplaceFile(path.c_str());
        if (!file)
            return -1;
        fwrite(text.data(), 1, text.size(), file);
        return EndReplaceFile(file, 1);
    }
    const std::string folder = FreshFolder(), path = folder + "\\list.dat";
    const std::filesystem::path native = ToPath(path);
};

TEST_F(NativeReplacedFile, FullDiskAndMissingRightsLeaveTheOldFile)
{
    for (size_t size : {101, 100000}) {  // fails when it is closed, and while it is written
        FullDisk disk(100);
        EXPECT_EQ(Replace(path, std::string(size, 'n')), 0) << size;
    }
    chmod(native.c_str(), 0444);
    EXPECT_EQ(Replace(path, "newer"), -1);
    EXPECT_EQ(GetLastError(), DWORD(ERROR_ACCESS_DENIED));
    EXPECT_FALSE(DeleteFileA(path.c_str()));
    chmod(native.c_str(), 0666);
    chmod(gFolders.base.c_str(), 0755);
    chmod(native.parent_path().c_str(), 0555);
    EXPECT_EQ(RunUnprivileged([&] { return Replace(path, "new") == -1; }), 1) << "the folder's";
    chmod(native.parent_path().c_str(), 0755);
    EXPECT_EQ(ReadWholeFile(path), "old");
    EXPECT_EQ(ListFolder(folder).size(), 1u);
    chmod(native.c_str(), 0640);
    EXPECT_EQ(Replace(path, "new"), 1);
    EXPECT_EQ(int(std::filesystem::status(native).permissions()), 0640) << "kept";
}

TEST_F(NativeReplacedFile, LinkStaysAndItsTargetIsReplaced)
{
    std::string link = FreshFolder() + "\\link.dat", device = folder + "\\device.dat";
    std::filesystem::create_symlink(native, ToPath(link));
    EXPECT_EQ(Replace(link, "new"), 1);
    EXPECT_TRUE(std::filesystem::is_symlink(ToPath(link)));
    EXPECT_EQ(ReadWholeFile(path), "new");
    std::filesystem::create_symlink("/dev/full", ToPath(device));
    EXPECT_EQ(Replace(device, "text"), -1);
    EXPECT_TRUE(std::filesystem::is_character_file("/dev/full"));
}

// A folder that goes while its file is written is what is told, not the file.
TEST_F(NativeReplacedFile, VanishedFolderIsTold)
{
    FILE *file = BeginReplaceFile(path.c_str());
    ASSERT_TRUE(file);
    std::filesystem::remove_all(native.parent_path());
    EXPECT_EQ(EndReplaceFile(file, 1), 0);
    EXPECT_EQ(GetLastError(), DWORD(ERROR_PATH_NOT_FOUND));
    EXPECT_FALSE(BeginReplaceFile(path.c_str()));
    EXPECT_EQ(GetLastError(), DWORD(ERROR_PATH_NOT_FOUND));
}
