#include "host/scene/sceneFixture.h"

#include "scene/replacedFile.h"
#include "types/error.h"

#include <functional>

#include <csignal>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

namespace files = std::filesystem;
using testing_support::SceneTest;

class ReplacedFile : public SceneTest {
public:
    /// Why a file cannot be written; empty when it could.
    static std::string problem(const std::string& file)
    {
        try {
            host::replaceFile(file, "new");
        } catch (const host::Error& error) {
            const std::string begin = "The file " + file + " cannot be written: ", text = error.what();
            EXPECT_EQ(text.substr(0, begin.size()), begin);
            return text.substr(std::min(begin.size(), text.size()));
        }
        return {};
    }
    static struct stat factsOf(const std::string& file)
    {
        struct stat facts = {};
        EXPECT_EQ(::stat(file.c_str(), &facts), 0) << file;
        return facts;
    }
    std::vector<std::string> names() const
    {
        std::vector<std::string> found;
        for (const auto& entry : files::directory_iterator(path("")))
            found.push_back(entry.path().filename().string());
        std::sort(found.begin(), found.end());
        return found;
    }
    /// Runs something in a process of its own and gives its status: of exit, or -signal.
    static int inChild(const std::function<int()>& run)
    {
        const pid_t child = ::fork();
        if (child == 0)
            ::_exit(run());
        int status = 0;
        ::waitpid(child, &status, 0);
        return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
    }
};

TEST_F(ReplacedFile, KeepsTheModeOfTheOldOne)
{
    for (const mode_t mode : {0600, 0640, 0664, 0755, 0200}) {
        const std::string file = write("file", "old");
        ASSERT_EQ(::chmod(file.c_str(), mode), 0);
        EXPECT_EQ(problem(file), "");
        EXPECT_EQ(factsOf(file).st_mode & 07777u, mode);
        ASSERT_EQ(::chmod(file.c_str(), 0600), 0);
        EXPECT_EQ(read(file), "new");
    }
    const mode_t mask = ::umask(027);
    EXPECT_EQ(problem(path("fresh")), "");
    ::umask(mask);
    EXPECT_EQ(factsOf(path("fresh")).st_mode & 07777u, 0640u);
}

TEST_F(ReplacedFile, KeepsOwnerAndGroupOrRefuses)
{
    if (::geteuid() != 0)
        GTEST_SKIP() << "only root may give files away";
    constexpr uid_t kUser = 12345, kOther = 12346;
    const std::string file = write("file", "old");
    ASSERT_EQ(::chown(file.c_str(), kOther, kOther), 0);
    ASSERT_EQ(::chmod(file.c_str(), 0666), 0);
    EXPECT_EQ(problem(file), "");
    EXPECT_EQ(factsOf(file).st_uid, kOther);
    EXPECT_EQ(factsOf(file).st_gid, kOther);
    ASSERT_EQ(::chmod(path("").c_str(), 0777), 0);
    const int status = inChild([&] {
        const bool user = ::setgid(kUser) == 0 && ::setuid(kUser) == 0;
        return user && problem(file) == "its owner would become another" ? 0 : 1;
    });
    EXPECT_EQ(status, 0);
    EXPECT_EQ(factsOf(file).st_uid, kOther);
    EXPECT_EQ(names(), (std::vector<std::string>{"file"}));
}

TEST_F(ReplacedFile, FollowsSymbolicLinks)
{
    files::create_directory(path("deep"));
    write("deep/file", "old");
    files::create_symlink("deep/file", path("link"));
    files::create_symlink(path("link"), path("linkOfLink"));
    files::create_symlink("deep/fresh", path("dangling"));
    files::create_symlink("ring", path("ring"));
    for (const char* name : {"link", "linkOfLink", "dangling"}) {
        EXPECT_EQ(problem(path(name)), "") << name;
        EXPECT_TRUE(files::is_symlink(path(name))) << name;
    }
    EXPECT_EQ(read(path("deep/file")), "new");
    EXPECT_EQ(read(path("deep/fresh")), "new");
    EXPECT_EQ(problem(path("ring")), "Too many levels of symbolic links");
}

TEST_F(ReplacedFile, RefusesWhatItMustNotReplace)
{
    const std::string locked = write("locked", "old"), pipe = path("pipe");
    ASSERT_EQ(::chmod(locked.c_str(), 0444), 0);
    files::create_symlink(locked, path("linkToLocked"));
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    files::create_directory(path("folder"));
    files::create_symlink("/dev/null", path("device"));
    const std::vector<std::string> before = names();
    const std::pair<const char*, const char*> cases[] = {{"locked", "it is write-protected"},
                                                         {"linkToLocked", "it is write-protected"},
                                                         {"pipe", "it is no ordinary file"},
                                                         {"device", "it is no ordinary file"},
                                                         {"folder", "it is a folder"},
                                                         {"locked/below", "Not a directory"},
                                                         {"missing/file", "No such file or directory"}};
    for (const auto& [name, reason] : cases)
        EXPECT_EQ(problem(path(name)), reason);
    EXPECT_EQ(problem(""), "it has no name");
    EXPECT_EQ(read(locked), "old");
    EXPECT_TRUE(S_ISFIFO(factsOf(pipe).st_mode));
    EXPECT_EQ(names(), before);
}

TEST_F(ReplacedFile, LeavesTheOldOneWhenTheDiskIsFullOrTheWriterIsKilled)
{
    const std::string file = write("file", "old");
    const std::string much(1 << 20, 'x');
    const int full = inChild([&] {
        ::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit = {1 << 16, 1 << 16};
        ::setrlimit(RLIMIT_FSIZE, &limit);
        try {
            host::replaceFile(file, much);
        } catch (const host::Error& error) {
            return std::string(error.what()) == "The file " + file + " cannot be written: File too large" ? 0
                                                                                                          : 1;
        }
        return 2;
    });
    EXPECT_EQ(full, 0);
    EXPECT_EQ(names(), (std::vector<std::string>{"file"}));
    const int killed = inChild([&] {
        host::ReplacedFile replaced(file);
        replaced.stream() << much;
        return ::raise(SIGKILL);
    });
    EXPECT_EQ(killed, -SIGKILL);
    EXPECT_EQ(read(file), "old");
    EXPECT_EQ(names().size(), 2u);
}

TEST_F(ReplacedFile, TidiesUpAfterKilledWritersOnly)
{
    const std::string file = path("file");
    for (const char* name : {"file.1.part", "file.23-4.part"})
        write(name, "abandoned");
    const std::vector<std::string> others = {"file.ma.1.part", "file.old.part", "file.part", "other.1.part"};
    for (const std::string& name : others)
        write(name, "of somebody else");
    {
        host::ReplacedFile alive(file);
        alive.stream() << "later";
        EXPECT_EQ(problem(file), "");
        EXPECT_EQ(read(file), "new");
        alive.commit();
    }
    EXPECT_EQ(read(file), "later");
    std::vector<std::string> expected = others;
    expected.push_back("file");
    std::sort(expected.begin(), expected.end());
    EXPECT_EQ(names(), expected);
}

} // namespace
