#include "tests/faults/program.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <iostream>
#include <stdexcept>
#include <utility>

namespace veldona::faults {
namespace {

using std::chrono::steady_clock;

[[noreturn]] void become(const std::string& name, const Program::Words& arguments,
                         const Program::Environment& environment) {
    // What it keeps for its user is not kept for whoever runs the tests.
    setenv("XDG_CONFIG_HOME", VELDONA_PROGRAMS "/../user", 1);
    for (const auto& [key, value] : environment)
        setenv(key.c_str(), value.c_str(), 1);
    const std::string path = std::string(VELDONA_PROGRAMS) + '/' + name;
    std::vector<char*> words{const_cast<char*>(path.c_str())};
    for (const std::string& word : arguments)
        words.push_back(const_cast<char*>(word.c_str()));
    words.push_back(nullptr);
    execv(path.c_str(), words.data());
    _exit(127);
}

} // namespace

Program::Program(const std::string& name, const Words& arguments, const Environment& environment) {
    int input[2], output[2];
    if (pipe2(input, O_CLOEXEC) != 0 || pipe2(output, O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
    signal(SIGPIPE, SIG_IGN); // a program that ends early is told of by its outcome
    id_ = fork();
    if (id_ < 0) throw std::runtime_error("no child process");
    if (id_ == 0) {
        signal(SIGPIPE, SIG_DFL);
        dup2(input[0], STDIN_FILENO);
        dup2(output[1], STDOUT_FILENO);
        dup2(output[1], STDERR_FILENO);
        become(name, arguments, environment);
    }
    close(input[0]);
    close(output[1]);
    toIt_ = input[1];
    fromIt_ = output[0];
}

Program::~Program() {
    close(toIt_);
    close(fromIt_);
    if (id_ < 0) return;
    kill(id_, SIGKILL);
    waitpid(id_, nullptr, 0);
}

void Program::write(const std::string& line) {
    const std::string text = line + '\n';
    if (::write(toIt_, text.data(), text.size()) != static_cast<ssize_t>(text.size()))
        throw std::runtime_error("it reads no more; it said: " + said_);
}

bool Program::readSome(steady_clock::time_point until) {
    pollfd waited{fromIt_, POLLIN, 0};
    const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(until - steady_clock::now());
    if (left.count() <= 0 || poll(&waited, 1, static_cast<int>(left.count())) <= 0)
        throw std::runtime_error("it says nothing more and does not end; it said: " + said_);
    char some[4096];
    const ssize_t count = read(fromIt_, some, sizeof some);
    if (count > 0) said_.append(some, static_cast<std::size_t>(count));
    return count > 0;
}

std::string Program::awaitWords(const std::string& words, std::chrono::seconds atMost) {
    const auto until = steady_clock::now() + atMost;
    for (;;) {
        const auto found = said_.find(words, given_);
        if (found != said_.npos) {
            const std::size_t from = given_;
            given_ = found + words.size();
            return said_.substr(from, given_ - from);
        }
        if (!readSome(until)) throw std::runtime_error("it ended; it said: " + said_);
    }
}

Outcome Program::finish(std::chrono::seconds atMost) {
    const auto until = steady_clock::now() + atMost;
    while (readSome(until)) {
    }
    return {exitOf(std::exchange(id_, -1)), said_};
}

pid_t inChild(const std::function<int()>& act) {
    const pid_t child = fork();
    if (child < 0) throw std::runtime_error("no child process");
    if (child > 0) return child;
    try {
        _exit(act());
    } catch (const std::exception& failure) { // a child that went on would be a second test
        std::cerr << failure.what() << '\n';
        _exit(255);
    }
}

int exitOf(pid_t child) {
    int status = 0;
    waitpid(child, &status, 0);
    return WIFSIGNALED(status) ? 128 + WTERMSIG(status) : WEXITSTATUS(status);
}

Outcome runProgram(const std::string& name, const Program::Words& arguments,
                   const Program::Environment& environment, const Program::Words& input) {
    Program program(name, arguments, environment);
    for (const std::string& line : input)
        program.write(line);
    return program.finish();
}

} // namespace veldona::faults
