#pragma once

#include <thread>

namespace tessary::desktop {

/// Reads which fonts are installed, in a thread of its own, while the main thread does what needs none of
/// them. The toolkit asks fontconfig, which keeps what was read for the whole process and may be used by
/// several threads at once. Waits for the thread when it goes.
class FontCatalogue
{
public:
    FontCatalogue();

private:
    std::jthread m_reader;
};

} // namespace tessary::desktop
