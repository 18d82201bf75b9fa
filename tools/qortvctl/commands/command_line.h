/** The command line: which command was chosen, and the options that all commands share. */
#pragma once

#include <CLI/CLI.hpp>
#include <chrono>
#include <functional>
#include <utility>

namespace qortvctl {

/** Options of every command. */
struct CommonOptions {
    std::chrono::milliseconds timeout{5000};  ///< how long to wait for the service
    bool json = false;                        ///< print JSON instead of text
};

/**
 * Commands are added once, then run() parses the arguments of the program and runs the command that
 * they name.
 */
class CommandLine {
  public:
    /** What a command does: prints its result and returns the exit status. */
    using Action = std::function<int(const CommonOptions&)>;

    CommandLine();

    /** The program itself, the parent of all commands that are not part of another one. */
    CLI::App& program() { return mProgram; }

    /**
     * Adds a command, which runs `action`.
     *
     * @param parent program(), or a group
     * @param description one line, shown in the list of commands
     * @param help shown by --help below the options
     */
    CLI::App& addCommand(CLI::App& parent, const char* name, const char* description,
                         const char* help, Action action);

    /** Adds a command that has commands of its own; without any of them it runs `action`. */
    CLI::App& addGroup(CLI::App& parent, const char* name, const char* description,
                       const char* help, Action action);

    /** For callbacks of the parser: makes run() run `action`. */
    void choose(Action action) { mChosen = std::move(action); }

    /**
     * Parses the arguments and runs the chosen command. Prints help texts and complaints about
     * wrong usage itself.
     *
     * @return the exit status
     * @throws what the command throws
     */
    int run(int argc, char** argv);

  private:
    CLI::App mProgram;
    CommonOptions mCommon;
    Action mChosen;
};

}  // namespace qortvctl
