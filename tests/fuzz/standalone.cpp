// Runs a fuzz target without libFuzzer, for ./check: NAME_fuzz SEEDS ROUNDS FAILING
//
// Every seed of the folder SEEDS, then so many changed ones, the same in every run. FAILING is the file in
// which a failing input is left: it holds what is being tried and goes at the end, so that it tells whatever
// ends the process.
#include <fcntl.h>
#include <unistd.h>

#include <ctime>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <set>
#include <string>

#include "tests/fuzz/fuzz_target.h"
#include "tests/fuzz/mutation.h"

namespace quorvex {
namespace {

namespace fs = std::filesystem;

constexpr double kPatience = 5;  // seconds of the processor for one input

double ProcessorSeconds() { return static_cast<double>(std::clock()) / CLOCKS_PER_SEC; }

class Trial {
 public:
  explicit Trial(fs::path itsFailing) : failing(std::move(itsFailing)), file(Open(failing)) {}
  Trial(const Trial&) = delete;
  Trial& operator=(const Trial&) = delete;
  ~Trial() {
    ::close(file);
    fs::remove(failing);
  }

  void Run(const Input& input) const {
    Note(input);
    const double begin = ProcessorSeconds();
    // Of its own length, so that reading beyond it is seen.
    const auto bytes = std::make_unique<std::uint8_t[]>(input.size());
    std::copy(input.begin(), input.end(), bytes.get());
    LLVMFuzzerTestOneInput(bytes.get(), input.size());
    Require(ProcessorSeconds() - begin < kPatience, "an input takes less than five seconds");
  }

 private:
  static int Open(const fs::path& path) {
    const int opened = ::open(path.c_str(), O_CREAT | O_TRUNC | O_WRONLY | O_CLOEXEC, 0644);
    Require(opened >= 0, "the file for a failing input can be made");
    return opened;
  }

  void Note(const Input& input) const {
    const bool noted = ::ftruncate(file, 0) == 0 &&
                       ::pwrite(file, input.data(), input.size(), 0) == static_cast<ssize_t>(input.size());
    Require(noted, "the input can be noted");
  }

  const fs::path failing;
  const int file;
};

Input ReadInput(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

std::vector<Input> ReadSeeds(const fs::path& folder) {
  std::set<fs::path> paths;
  for (const fs::directory_entry& entry : fs::directory_iterator(folder)) paths.insert(entry.path());
  std::vector<Input> seeds;
  for (const fs::path& path : paths) seeds.push_back(ReadInput(path));
  Require(!seeds.empty(), "there are seeds");
  return seeds;
}

void RunAll(const fs::path& folder, int rounds, const fs::path& failing) {
  const std::vector<Input> seeds = ReadSeeds(folder);
  const Trial trial(failing);
  trial.Run({});
  for (const Input& seed : seeds) trial.Run(seed);
  std::mt19937 random(1);
  for (int round = 0; round < rounds; ++round) trial.Run(Mutated(seeds, random));
  std::printf("%zu seeds, %d changed ones, %.1f s\n", seeds.size(), rounds, ProcessorSeconds());
}

}  // namespace
}  // namespace quorvex

int main(int count, char** arguments) {
  if (count != 4) return 2;
  quorvex::RunAll(arguments[1], std::atoi(arguments[2]), arguments[3]);
  return 0;
}
