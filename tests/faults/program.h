// A program of the house as a shop starts it: a process with a command line, an input and what it writes.
#pragma once

#include <chrono>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include <sys/types.h>

namespace veldona::faults {

struct Outcome {
    int code = 0;     // 128 and the signal's number where a signal ended it
    std::string said; // both of its outputs
};

class Program {
public:
    using Words = std::vector<std::string>;
    using Environment = std::map<std::string, std::string>; // beside our own

    // `name` is that of a program of this build. Raises runtime_error where it can't be started.
    Program(const std::string& name, const Words& arguments, const Environment& environment = {});
    ~Program(); // kills it where it still runs
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    [[nodiscard]] pid_t id() const { return id_; }
    void write(const std::string& line);
    // What it says until `words` stand in it; raises runtime_error with what it said where they don't come.
    std::string awaitWords(const std::string& words, std::chrono::seconds atMost = std::chrono::seconds(30));
    // To its end; kills it and raises runtime_error where that does not come.
    Outcome finish(std::chrono::seconds atMost = std::chrono::seconds(60));

private:
    bool readSome(std::chrono::steady_clock::time_point until); // false at the end of its outputs

    pid_t id_ = -1;
    int toIt_ = -1, fromIt_ = -1;
    std::string said_;
    std::size_t given_ = 0; // of said_, by awaitWords
};

// Does `act` in a child process, which ends with what it answers.
[[nodiscard]] pid_t inChild(const std::function<int()>& act);
[[nodiscard]] int exitOf(pid_t child); // of any child, when it has ended; as in Outcome

// `input`: lines that it reads.
[[nodiscard]] Outcome runProgram(const std::string& name, const Program::Words& arguments,
                                 const Program::Environment& environment = {},
                                 const Program::Words& input = {});

} // namespace veldona::faults
