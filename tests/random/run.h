// What a random run is made of, and how to run it again: KVAL_SEED=n and KVAL_PAIRS=n in the environment.
#pragma once

#include <cstdint>
#include <string>

// The seed of this run: KVAL_SEED, or a fresh one.
std::uint64_t run_seed();

// How many operands, or pairs of them, every operation gets: KVAL_PAIRS, or 100,000, or 10,000 under sanitizers.
unsigned run_pairs();

// The command that runs the current test again, with the same operands.
std::string replay_line();
