// The files of a command: inputs, one of which may be standard input, and the output, which takes its place when it is
// whole and is never an input.
#pragma once

#include "platform/files.h"

#include <memory>
#include <string>
#include <vector>

// The bytes of a file, of standard input where it is "-". Error 55 where standard output would write to it; the errors
// of ReadFile.
std::string ReadInput(const std::string &path);

// What messages about an output name.
std::string OutputName(const std::string &path);

// An output being written. Without a path, or with "-" or another name of it, it is standard output.
class Result {
public:
    // Error 55 where the path leads to one of the inputs; those of making a file beside its place.
    Result(std::string path, const std::vector<std::string> &inputs);

    OutputFile &File() { return *file; }
    const std::string &Staged() const { return staged; } // where it is written; "" for standard output
    void Close();                                        // whole: it takes its place

private:
    void OpenBeside();

    std::string place;
    std::string staged;
    std::unique_ptr<OutputFile> file;
};
