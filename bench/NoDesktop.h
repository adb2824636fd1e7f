#pragma once

#include "Platform/Desktop/FolderChooser.h"
#include "Platform/Volumes.h"

#include <functional>
#include <vector>

namespace morlaine::bench {

// A desktop without services, so that measurements do not depend on the machine.

class NoVolumes final : public Volumes {
public:
    [[nodiscard]] std::vector<MountedVolume> mountedVolumes() const override { return {}; }
};

class NoChooser final : public FolderChooser {
public:
    void choose(QWidget& /*window*/, const Texts& /*texts*/, std::function<void(const FileUrl&)> /*onChosen*/) override
    {
    }
};

} // namespace morlaine::bench
