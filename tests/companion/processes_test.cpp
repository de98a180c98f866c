// Several processes and one user dictionary: none loses a word of another.
#include "companion/support.h"

#include <sys/wait.h>
#include <unistd.h>

TEST_F(CleanDictionaries, NoProcessLosesAWordOfAnother)
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
            failed += AddWord(("\241\276" + std::to_string(process * 1000 + i)).c_str()) != 0;
        _exit(failed);
    }
    for (pid_t child : children) {
        int status;
        waitpid(child, &status, 0);
        EXPECT_EQ(status, 0);
    }
    EXPECT_EQ(UserWords().size(), size_t(kProcesses * kWords));
}
