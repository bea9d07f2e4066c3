#pragma once

#include "ui/kit/v_icon.h"

#include <QList>
#include <QObject>
#include <QString>

#include <optional>

namespace velmora {

/// A row of the popup's menu.
struct PopoverRow {
    Q_GADGET
    Q_PROPERTY(int icon READ iconNumber CONSTANT)
    Q_PROPERTY(QString label MEMBER label CONSTANT)
    Q_PROPERTY(QString shortcut MEMBER shortcut CONSTANT)
    Q_PROPERTY(bool muted MEMBER muted CONSTANT)
    Q_PROPERTY(bool separated MEMBER separated CONSTANT)
    Q_PROPERTY(velmora::PopoverRow::Action action MEMBER action CONSTANT)

public:
    enum class Action {
        History,
        Meetings,
        Settings,
        About,
        OpenPermissions,
        TestRecord,
        ShowOnboarding,
        Quit
    };
    Q_ENUM(Action)

    std::optional<VIcon> icon = {};
    QString label;
    QString shortcut = {};  ///< printed only
    bool muted = false;     ///< in the quieter colour
    bool separated = false; ///< with a hairline above it
    Action action = Action::History;

    /// As VIconView has it; -1 for none.
    [[nodiscard]] int iconNumber() const { return icon ? static_cast<int>(*icon) : -1; }
    bool operator==(const PopoverRow&) const = default;
};

using PopoverAction = PopoverRow::Action;

/// What the popup offers while no meeting goes on.
[[nodiscard]] QList<PopoverRow> standardPopoverRows();

} // namespace velmora
