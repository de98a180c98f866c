// Several processes and one user dictionary: none loses a word of another, and a kill at any moment
// leaves the old file or the new one.
#include "companion/support.h"

#include <csignal>
#include <ctime>
#include <set>
#include <sys/wait.h>
#include <unistd.h>

class Processes : public CleanDictionaries
{
};

static std::string NumberedWord(int number)
{
    return "\241\276" + std::to_string(number);
}

// The child adds and deletes without an end.
static void ChangeForever()
{
    for (int number = 1;; ++number) {
        AddWord(NumberedWord(number).c_str());
        if (number % 3 == 0)
            DeleteWord(NumberedWord(number - 1).c_str());
    }
}

// What the child had written when it was killed: the words 1 to n but for some deleted ones, and
// every line whole.
static bool IsConsistent(const std::vector<std::string> &words)
{
    std::set<int> numbers;
    for (const std::string &word : words) {
        if (word.compare(0, 2, "\241\276") || word.size() < 3)
            return false;
        numbers.insert(std::stoi(word.substr(2)));
    }
    for (int number = 1; !numbers.empty() && number < *numbers.rbegin(); ++number)
        if (number % 3 != 2 && !numbers.count(number))
            return false;
    return !numbers.empty();
}

static void Nap(long microseconds)
{
    timespec pause = {0, microseconds * 1000};
    nanosleep(&pause, nullptr);
}

// A slow machine needs a while until the child has come so far.
static bool WaitForFirstWord(const std::string &head)
{
    for (int patience = 0; patience < 10000; ++patience) {
        if (ReadDataFile("UserDict.dat").size() > head.size())
            return true;
        Nap(1000);
    }
    return false;
}

TEST_F(Processes, AKillAtAnyMomentLeavesTheOldOrTheNewFile)
{
    const std::string head = "# a comment that has to stay\n";
    for (int round = 0; round < 60; ++round) {
        RemoveDataFile("UserDict.dat");
        WriteDataFile("UserDict.dat", head);
        UnloadDictionaries();
        pid_t child = fork();
        ASSERT_GE(child, 0);
        if (!child)
            ChangeForever();
        EXPECT_TRUE(WaitForFirstWord(head));
        Nap(long(NextRandom() % 20000));
        kill(child, SIGKILL);
        waitpid(child, nullptr, 0);
        RemoveDataFolder("UserDict.dat.lock");
        ASSERT_EQ(ReadDataFile("UserDict.dat").compare(0, head.size(), head), 0);
        ASSERT_TRUE(IsConsistent(UserWords())) << ReadDataFile("UserDict.dat");
        ASSERT_EQ(AddWord("\255\276"), 0) << "the next process can go on";
    }
}

TEST_F(Processes, NoneLosesAWordOfAnother)
{
    constexpr int kProcesses = 3, kWords = 40;
    pid_t children[kProcesses];
    for (int process = 0; process < kProcesses; ++process) {
        children[process] = fork();
        ASSERT_GE(children[process], 0);
        if (children[process])
            continue;
        int failed = 0;
        for (int i = 0; i < kWords; ++i)
            failed += AddWord(NumberedWord(process * 1000 + i).c_str()) != 0;
        _exit(failed);
    }
    for (pid_t child : children) {
        int status;
        waitpid(child, &status, 0);
        EXPECT_EQ(status, 0);
    }
    EXPECT_EQ(UserWords().size(), size_t(kProcesses * kWords));
}
