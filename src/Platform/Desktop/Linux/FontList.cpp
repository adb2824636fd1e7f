#include "Platform/Desktop/FontList.h"

#include "Platform/Background.h"

#include <memory>

#include <fontconfig/fontconfig.h>

namespace morlaine {

std::future<void> readFontList()
{
    auto done = std::make_shared<std::promise<void>>();
    std::future<void> result = done->get_future();
    // Work that could not be started is destroyed, and its promise with it: the result is ready too.
    (void)Background::start("font list", Background::Priority::userInitiated, [done = std::move(done)] {
        ::FcInit();
        done->set_value();
    });
    return result;
}

} // namespace morlaine
