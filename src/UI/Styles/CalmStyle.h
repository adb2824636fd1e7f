#pragma once

#include <QProxyStyle>

namespace morlaine {

/// The toolkit's own style with its relief taken out: flat controls with round corners and hairlines between panels.
class CalmStyle final : public QProxyStyle {
    Q_OBJECT

public:
    CalmStyle();
};

} // namespace morlaine
