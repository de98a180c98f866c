// Replacing files on the native target: full disks, rights, links, devices, killed writers.
#include <gtest/gtest.h>

#include <sys/stat.h>

#include "native_support.h"

static int Replace(const std::string &path, const std::string &text)
{
    FILE *file = BeginReplaceFile(path.c_str());
    if (!file)
        return -1;
    fwrite(text.data(), 1, text.size(), file);
    return EndReplaceFile(file, path.c_str(), 1);
}

TEST(NativeReplacedFile, FullDiskLeavesTheOldFile)
{
    std::string folder = FreshFolder(), path = folder + "\\list.dat";
    ASSERT_EQ(Replace(path, "old"), 1);
    for (size_t size : {101, 100000}) {  // fails when it is closed, and while it is written
        FullDisk disk(100);
        EXPECT_EQ(Replace(path, std::string(size, 'n')), 0) << size;
    }
    EXPECT_EQ(ReadWholeFile(path), "old");
    EXPECT_EQ(ListFolder(folder).size(), 1u);
}

TEST(NativeReplacedFile, PermissionsAreKeptAndObeyed)
{
    std::string folder = FreshFolder(), path = folder + "\\list.dat";
    struct stat status;
    ASSERT_EQ(Replace(path, "old"), 1);
    chmod(ToPath(path).c_str(), 0600);
    EXPECT_EQ(Replace(path, "new"), 1);
    ASSERT_EQ(stat(ToPath(path).c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0600u);
    chmod(ToPath(path).c_str(), 0444);
    EXPECT_EQ(Replace(path, "newer"), -1);
    EXPECT_EQ(ReadWholeFile(path), "new");
    EXPECT_EQ(GetFileAttributesA(path.c_str()),
              DWORD(FILE_ATTRIBUTE_ARCHIVE | FILE_ATTRIBUTE_READONLY));
    EXPECT_FALSE(DeleteFileA(path.c_str()));
    EXPECT_EQ(GetLastError(), DWORD(ERROR_ACCESS_DENIED));
}

TEST(NativeReplacedFile, ReadOnlyFolderIsRefused)
{
    std::string folder = FreshFolder(), path = folder + "\\list.dat";
    ASSERT_EQ(Replace(path, "old"), 1);
    chmod(gFolders.base.c_str(), 0755);
    chmod(ToPath(path).c_str(), 0666);
    chmod(ToPath(folder).c_str(), 0555);
    EXPECT_EQ(RunUnprivileged([&] { return Replace(path, "new") == -1; }), 1);
    chmod(ToPath(folder).c_str(), 0755);
    EXPECT_EQ(ReadWholeFile(path), "old");
}

TEST(NativeReplacedFile, LinkStaysAndItsTargetIsReplaced)
{
    std::string folder = FreshFolder(), other = FreshFolder();
    ASSERT_EQ(Replace(other + "\\real.dat", "old"), 1);
    std::filesystem::create_symlink(ToPath(other + "\\real.dat"), ToPath(folder + "\\link.dat"));
    EXPECT_EQ(Replace(folder + "\\link.dat", "new"), 1);
    EXPECT_TRUE(std::filesystem::is_symlink(ToPath(folder + "\\link.dat")));
    EXPECT_EQ(ReadWholeFile(other + "\\real.dat"), "new");
}

TEST(NativeReplacedFile, DeviceIsNotReplaced)
{
    std::string link = FreshFolder() + "\\link.dat";
    std::filesystem::create_symlink("/dev/full", ToPath(link));
    EXPECT_EQ(Replace(link, "text"), -1);
    EXPECT_TRUE(std::filesystem::is_character_file("/dev/full"));
}

TEST(NativeReplacedFile, KilledWriterLeavesTheOldFileAndNoPile)
{
    std::string folder = FreshFolder(), path = folder + "\\list.dat";
    ASSERT_EQ(Replace(path, "old"), 1);
    for (int i = 0; i < 20; i++) {
        pid_t writer = fork();
        if (writer == 0) {
            FILE *file = BeginReplaceFile(path.c_str());
            fputs("half of the", file);
            fflush(file);
            raise(SIGKILL);
        }
        waitpid(writer, nullptr, 0);
        EXPECT_EQ(ReadWholeFile(path), "old");
    }
    EXPECT_EQ(ListFolder(folder).size(), 2u);
    EXPECT_EQ(Replace(path, "new"), 1);
    EXPECT_EQ(ListFolder(folder).size(), 1u);
}
