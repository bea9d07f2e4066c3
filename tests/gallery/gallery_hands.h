#pragma once

#include <QQuickItem>

namespace velmora::test {

/// The item with that objectName; throws PlainError when there is none.
[[nodiscard]] QQuickItem& part(QQuickItem& view, const char* name);

/// What a person does with the pointer and the keyboard, for a picture's `arrange`.
void hover(QQuickItem& item);
void click(QQuickItem& item);
/// Goes on with the Tab key, so many times.
void tab(QQuickItem& view, int times = 1);

} // namespace velmora::test
