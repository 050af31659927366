#pragma once

#include "testkit/ProgramFixture.h"

#include <QString>

#include <functional>
#include <vector>

namespace tessary::pictures {

/// One state of the program, as a picture shows it.
struct Scene
{
    QString name;
    std::function<void(testkit::ProgramFixture&)> show;
    bool typical = false;    ///< stands for the others where not all are wanted
    int settlingTime = 1300; ///< in milliseconds, for its animations
};

/// Every screen and state, in the order in which people meet them.
[[nodiscard]] std::vector<Scene> scenes();

} // namespace tessary::pictures
