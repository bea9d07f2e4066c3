#include "processes.h"

#include "speech/decoder_child.h"

#include <gmock/gmock.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <thread>

namespace velmora::server {

namespace {

constexpr std::chrono::seconds patience{30};

std::filesystem::path folderOf(pid_t process) {
    return std::filesystem::path("/proc") / std::to_string(process);
}

} // namespace

std::vector<pid_t> childrenOf(pid_t parent) {
    std::vector<pid_t> found;
    for (const auto& entry : std::filesystem::directory_iterator("/proc")) {
        const auto process = static_cast<pid_t>(std::atoi(entry.path().filename().c_str()));
        if (process > 0 && statusOf(process)["PPid"] == std::to_string(parent) && isRunning(process)) {
            found.push_back(process);
        }
    }
    return found;
}

std::vector<pid_t> children() {
    return childrenOf(::getpid());
}

bool isRunning(pid_t process) {
    const auto state = statusOf(process)["State"];
    return !state.empty() && state.front() != 'Z' && state.front() != 'X';
}

namespace {

bool hasArgument(pid_t process, const std::string& argument) {
    std::ifstream file("/proc/" + std::to_string(process) + "/cmdline");
    const std::string line{std::istreambuf_iterator<char>(file), {}};
    return line.find(argument) != std::string::npos;
}

} // namespace

pid_t waitForChild() {
    const auto deadline = std::chrono::steady_clock::now() + patience;
    while (std::chrono::steady_clock::now() < deadline) {
        // Not before it has become the other program: until then our own thread waits for it.
        if (const auto all = children(); !all.empty() && hasArgument(all.front(), decodeArgument)) {
            return all.front();
        }
    }
    throw std::runtime_error("no child");
}

void expectEnd(pid_t process) {
    const auto deadline = std::chrono::steady_clock::now() + patience;
    while (isRunning(process)) {
        ASSERT_LT(std::chrono::steady_clock::now(), deadline) << "still there: " << process;
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
}

std::map<std::string, std::string> statusOf(pid_t process) {
    std::map<std::string, std::string> values;
    std::ifstream file(folderOf(process) / "status");
    for (std::string line; std::getline(file, line);) {
        const auto colon = line.find(':');
        const auto value = line.find_first_not_of(" \t", colon + 1);
        values[line.substr(0, colon)] = value == std::string::npos ? "" : line.substr(value);
    }
    return values;
}

std::string limitOf(pid_t process, const std::string& name) {
    std::ifstream file(folderOf(process) / "limits");
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with(name)) {
            std::istringstream rest(line.substr(name.size()));
            std::string value;
            rest >> value;
            return value;
        }
    }
    return {};
}

} // namespace velmora::server
