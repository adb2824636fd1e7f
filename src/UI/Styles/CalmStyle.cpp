#include "UI/Styles/CalmStyle.h"

namespace morlaine {

CalmStyle::CalmStyle() : QProxyStyle(QStringLiteral("fusion"))
{
}

} // namespace morlaine
