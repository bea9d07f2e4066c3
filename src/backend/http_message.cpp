#include "backend/http_message.h"

#include <algorithm>

namespace velmora {
namespace {

auto named(const QByteArray& name) {
    return [&name](const auto& field) { return field.first.compare(name, Qt::CaseInsensitive) == 0; };
}

} // namespace

void HttpHeaders::set(const QByteArray& name, const QByteArray& value) {
    std::erase_if(m_fields, named(name));
    append(name, value);
}

QByteArray HttpHeaders::value(const QByteArray& name) const {
    const auto field = std::find_if(m_fields.begin(), m_fields.end(), named(name));
    return field == m_fields.end() ? QByteArray() : field->second;
}

} // namespace velmora
