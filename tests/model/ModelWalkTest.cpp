#include "tests/model/walk/ModelWalk.h"

#include "tests/support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <iostream>
#include <map>
#include <random>
#include <string>

namespace stackreel
{

namespace
{

std::uint64_t fromEnvironment(const char* name, std::uint64_t otherwise)
{
    const char* const text = std::getenv(name);
    return text != nullptr ? std::stoull(text) : otherwise;
}

std::string ruleOf(const std::string& line)
{
    return line.substr(0, line.find(':'));
}

} // namespace

/// Carries out random operations on the model and checks the invariants that ModelInvariants.h lists. The
/// program "restarts" after some hundred operations. STACKREEL_WALK_SEED repeats a walk; STACKREEL_WALK_STEPS
/// sets its length.
TEST(ModelWalkTest, KeepsTheInvariantsWhateverEndsWhen)
{
    const std::uint64_t seed = fromEnvironment("STACKREEL_WALK_SEED", std::random_device()());
    const std::uint64_t steps = fromEnvironment("STACKREEL_WALK_STEPS", 100'000);
    std::cout << "STACKREEL_WALK_SEED=" << seed << " STACKREEL_WALK_STEPS=" << steps << "\n";
    Random random(seed);
    const TemporaryDirectory folder;
    std::map<std::string, int> runsThatBreak;
    std::map<std::string, std::string> shortest;
    for (std::uint64_t done = 0; done < steps;) {
        ModelWalk walk(random, folder.path());
        const std::uint64_t length = std::min<std::uint64_t>(1 + random.below(600), steps - done);
        for (std::uint64_t step = 0; step < length && walk.broken().empty(); ++step, ++done)
            walk.step();
        walk.end();
        if (walk.broken().empty())
            continue;
        const std::string rule = ruleOf(walk.broken().front());
        if (++runsThatBreak[rule] == 1)
            shortest[rule] = walk.operations();
        if (walk.operations().size() <= shortest[rule].size())
            shortest[rule] = walk.operations() + "broke " + walk.broken().front();
    }
    for (const auto& [rule, count] : runsThatBreak)
        ADD_FAILURE() << rule << ": broken first in " << count << " runs of the program. The shortest:\n"
                      << shortest[rule];
}

} // namespace stackreel
