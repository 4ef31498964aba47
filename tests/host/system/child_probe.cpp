// A program for tests that run programs: does as its first word says, with the words behind it.

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iostream>
#include <map>
#include <string>
#include <thread>
#include <vector>

namespace {

using Words = std::vector<std::string>;

int copy(const Words&) {
  std::cout << std::cin.rdbuf();
  return 0;
}

int exitWith(const Words& words) { return static_cast<int>(std::stoll(words.at(2))); }

/// So many bytes to each stream.
int write(const Words& words) {
  std::cout << std::string(std::stoul(words.at(2)), 'x');
  std::cerr << std::string(std::stoul(words.at(3)), 'y');
  return 0;
}

int writeOnAndOn(const Words&) {
  while (std::cout << "more\n") {
  }
  return 0;
}

[[noreturn]] void sleepForEver() {
  for (;;) std::this_thread::sleep_for(std::chrono::hours(1));
}

[[noreturn]] int hang(const Words&) {
  std::cout << "begun" << std::flush;
  sleepForEver();
}

/// Hangs once it has told so and then made a file: who sees the file can rely on the words.
[[noreturn]] int touchAndHang(const Words& words) {
  std::cout << "begun" << std::flush;
  std::ofstream(std::filesystem::u8path(words.at(2))) << "begun" << std::flush;
  sleepForEver();
}

/// Ends once one that hangs has begun.
int leaveOneBehind(const Words& words) {
  const std::filesystem::path begun = std::filesystem::u8path(words.at(2));
  const std::string command = words.at(0) + " touch " + words.at(2);
  std::thread([command] { std::exit(std::system(command.c_str()) + 1); }).detach();
  while (!std::filesystem::exists(begun)) std::this_thread::yield();
  std::_Exit(0);
}

int tellWords(const Words& words) {
  for (std::size_t i = 2; i < words.size(); ++i) std::cout << words[i] << "|";
  return 0;
}

int tellVariable(const Words& words) {
  const char* const value = std::getenv(words.at(2).c_str());
  std::cout << (value == nullptr ? "none" : value);
  return 0;
}

int tellFolder(const Words&) {
  std::cout << std::filesystem::current_path().u8string();
  return 0;
}

}  // namespace

int main(int count, char** arguments) {
  const Words words(arguments, arguments + count);
  static const std::map<std::string, std::function<int(const Words&)>> kDeeds{
      {"copy", copy},       {"exit", exitWith},        {"flood", writeOnAndOn}, {"folder", tellFolder},
      {"hang", hang},       {"leave", leaveOneBehind}, {"touch", touchAndHang}, {"variable", tellVariable},
      {"words", tellWords}, {"write", write}};
  const int status = kDeeds.at(words.at(1))(words);
  std::cout.flush();
  return status;
}
