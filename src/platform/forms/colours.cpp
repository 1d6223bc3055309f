#include "platform/forms/colours.h"

#include <QGuiApplication>
#include <QPalette>

#include <array>

namespace tolvek {

namespace {

using Role = QPalette::ColorRole;

// Indexed by the low byte of a system colour.
constexpr std::array<Role, 25> kSystemRoles{
    Role::Button, Role::Window, Role::Highlight,  Role::Mid,         Role::Window,
    Role::Base,   Role::Shadow, Role::WindowText, Role::WindowText,  Role::HighlightedText,
    Role::Mid,    Role::Mid,    Role::Dark,       Role::Highlight,   Role::HighlightedText,
    Role::Button, Role::Dark,   Role::Mid,        Role::ButtonText,  Role::WindowText,
    Role::Light,  Role::Shadow, Role::Light,      Role::ToolTipText, Role::ToolTipBase};

QColor systemColour(unsigned index)
{
    const Role role = index < kSystemRoles.size() ? kSystemRoles[index] : Role::WindowText;
    return QGuiApplication::palette().color(role);
}

}

QColor colourOf(Colour colour)
{
    const auto bits = static_cast<std::uint32_t>(colour);
    if (bits & 0x80000000U) return systemColour(bits & 0xFFU);
    return {static_cast<int>(bits & 0xFFU), static_cast<int>((bits >> 8) & 0xFFU),
            static_cast<int>((bits >> 16) & 0xFFU)};
}

}
