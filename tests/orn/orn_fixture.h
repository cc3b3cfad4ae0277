// Runs the program as its users do: arguments in, text and an exit status out.
#pragma once

#include <sys/wait.h>

#include <array>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>

#include <gtest/gtest.h>
#include <json/json.h>

#include "support/temporary_folder.h"

inline const std::string kPlan = ORN_SAMPLES "/floor-plan.dxf";

struct Outcome {
    int status = -1;
    std::string out;
    std::string err;

    Json::Value json() const {
        Json::Value value;
        std::istringstream(out) >> value;
        return value;
    }
};

class Orn : public testing::Test {
protected:
    std::string put(const char* name, const std::string& bytes) const {
        const std::string path = (folder_.path() / name).string();
        std::ofstream(path, std::ios::binary) << bytes;
        return path;
    }

    /// Runs the program through a shell with quoted arguments and the given input.
    Outcome run(const std::string& arguments, const std::string& input = "") const {
        const std::string typed = put("typed", input);
        const std::string complaints = (folder_.path() / "complaints").string();
        const std::string command =
            "'" ORN_PROGRAM "' " + arguments + " < '" + typed + "' 2> '" + complaints + "'";
        Outcome result;
        FILE* pipe = popen(command.c_str(), "r");
        std::array<char, 4096> buffer{};
        while (const std::size_t count = fread(buffer.data(), 1, buffer.size(), pipe))
            result.out.append(buffer.data(), count);
        const int status = pclose(pipe);
        result.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
        std::ifstream errors(complaints);
        result.err = {std::istreambuf_iterator<char>(errors), {}};
        return result;
    }

    test_support::TemporaryFolder folder_;
};
