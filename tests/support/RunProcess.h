#pragma once

#include <cstdlib>
#include <fcntl.h>
#include <fstream>
#include <map>
#include <spawn.h>
#include <sstream>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

extern char** environ;

struct ProcessResult {
    int status = -1; // exit status, or -1 when it did not exit normally
    std::string out;
    std::string err;
};

// Runs a program to its end with extra environment variables (an empty value removes the
// variable) and returns its exit status and what it printed.
inline ProcessResult runProcess(const std::string& program, const std::vector<std::string>& arguments,
                                const std::map<std::string, std::string>& environment = {})
{
    std::string outPath = "/tmp/ampwell-run-XXXXXX";
    std::string errPath = "/tmp/ampwell-run-XXXXXX";
    ::close(::mkstemp(outPath.data()));
    ::close(::mkstemp(errPath.data()));

    std::vector<std::string> env;
    for (char** entry = environ; *entry; ++entry) {
        std::string variable = *entry;
        if (!environment.count(variable.substr(0, variable.find('='))))
            env.push_back(variable);
    }
    for (const auto& [name, value] : environment)
        if (!value.empty())
            env.push_back(name + "=" + value);

    std::vector<char*> argv{const_cast<char*>(program.c_str())};
    for (const std::string& argument : arguments)
        argv.push_back(const_cast<char*>(argument.c_str()));
    argv.push_back(nullptr);
    std::vector<char*> envp;
    for (std::string& variable : env)
        envp.push_back(variable.data());
    envp.push_back(nullptr);

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, 1, outPath.c_str(), O_WRONLY | O_TRUNC, 0);
    posix_spawn_file_actions_addopen(&actions, 2, errPath.c_str(), O_WRONLY | O_TRUNC, 0);
    ProcessResult result;
    pid_t child = 0;
    if (posix_spawn(&child, program.c_str(), &actions, nullptr, argv.data(), envp.data()) == 0) {
        int status = 0;
        ::waitpid(child, &status, 0);
        result.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }
    posix_spawn_file_actions_destroy(&actions);
    auto slurp = [](const std::string& path) {
        std::ifstream in(path);
        std::stringstream text;
        text << in.rdbuf();
        ::unlink(path.c_str());
        return text.str();
    };
    result.out = slurp(outPath);
    result.err = slurp(errPath);
    return result;
}
