// The rooms of values at work on bytes in memory: no front, no file, all cases in one process.
#pragma once

#include "model/field_model.h"
#include "report/notices.h"
#include "report/reader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

// What a case is told, and what it answers; Yes and OK where it says nothing.
struct Told {
    std::vector<LoadNotice> Notices;
    std::vector<Integer> Rows;
    std::function<Answer(const LoadNotice &)> Reply;
};

extern Told Heard;

class Values : public testing::Test {
protected:
    Values();

    // Puts a template of these lines behind a header with this version item into the model.
    static void Load(const std::vector<std::string> &templateLines, const std::string &version = "QuintaveV2");

    // Reads a report of these records, on top of what is there.
    static LoadResult Read(const std::vector<std::string> &records);
    static LoadResult ReadBytes(const std::string &bytes);

    // The bytes that the entries are written as: all of them, and the records behind the header line.
    static std::string Written();
    static std::string Records();

    // What was told, in its order.
    static std::vector<Notice> Kinds();
};

// A text that is written to an open file which has no name.
std::string BytesOf(const std::function<void(class OutputFile &)> &write);

std::string Lines(const std::vector<std::string> &lines);
