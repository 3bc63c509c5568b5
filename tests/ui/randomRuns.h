// randomRuns: the settings of the seeded random tests of the Vorel window. randomRunSetting
// reads one from the environment, so that a long run or the replay of
// one failing seed needs no rebuild:
//   VOREL_RANDOM_SEED       the first seed (each sequence takes the next one)
//   VOREL_RANDOM_SEQUENCES  how many random edit sequences to run
//   VOREL_RANDOM_STEPS      steps per sequence
//   VOREL_MONKEY_EVENTS     how many random user events the monkey test sends
// A setting that is absent or not a positive number takes the short default of the test suite.
#pragma once

#include <cstdlib>
#include <string>

namespace vorel {

inline unsigned randomRunSetting(const char* name, unsigned fallback) {
    const char* text = std::getenv(name);
    if (!text)
        return fallback;
    char* end = nullptr;
    const unsigned long value = std::strtoul(text, &end, 10);
    return (end != text && *end == '\0' && value > 0) ? static_cast<unsigned>(value) : fallback;
}

} // namespace vorel
