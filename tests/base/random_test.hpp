#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <random>
#include <string>
#include <vector>

namespace xo::test {

/// Base of tests on random input. A run draws one seed, and every test of it starts from that.
/// Setting the environment variable XO_TEST_SEED to a seed repeats its run.
class RandomTest : public ::testing::Test {
 protected:
  RandomTest() : engine(Seed()) {}

  std::uint64_t Bits() { return engine(); }

  /// A number from 0 to `limit - 1`.
  unsigned Below(unsigned limit) { return static_cast<unsigned>(engine() % limit); }

  bool OneIn(unsigned cases) { return Below(cases) == 0; }

  unsigned char Byte() { return static_cast<unsigned char>(engine()); }

  std::vector<unsigned char> Bytes(std::size_t size) {
    std::vector<unsigned char> bytes(size);
    for (unsigned char& byte : bytes) byte = Byte();
    return bytes;
  }

 private:
  /// The seed of the run. It is printed before it is used, as a run that a sanitizer ends comes to
  /// no later place.
  static std::uint64_t Seed() {
    static std::uint64_t const seed = [] {
      std::uint64_t const chosen = ChooseSeed();
      std::cout << "random input: XO_TEST_SEED=" << chosen << std::endl;
      return chosen;
    }();
    return seed;
  }

  static std::uint64_t ChooseSeed() {
    if (char const* given = std::getenv("XO_TEST_SEED")) return std::stoull(given);
    std::random_device device;
    return std::uint64_t{device()} << 32 | device();
  }

  std::mt19937_64 engine;
};

}  // namespace xo::test
