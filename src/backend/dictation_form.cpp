#include "backend/dictation_form.h"

#include "foundation/error.h"

#include <QFile>
#include <QFileInfo>
#include <QUuid>

namespace velmora {
namespace {

QByteArray newBoundary() {
    return "velmora-" + QUuid::createUuid().toByteArray(QUuid::WithoutBraces).toUpper();
}

} // namespace

DictationForm::DictationForm(const QString& path, const QString& mimeType)
    : m_boundary(newBoundary()) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        throw PlainError(file.errorString());
    const QByteArray head =
        "--" + m_boundary + "\r\nContent-Disposition: form-data; name=\"file\"; filename=\"" +
        QFileInfo(path).fileName().toUtf8() + "\"\r\nContent-Type: " + mimeType.toUtf8() + "\r\n\r\n";
    const QByteArray tail = "\r\n--" + m_boundary + "--\r\n";
    m_bytes.reserve(head.size() + file.size() + tail.size());
    m_bytes.append(head);
    m_bytes.resize(head.size() + file.size());
    const qint64 size = file.read(m_bytes.data() + head.size(), file.size());
    if (size < 0)
        throw PlainError(file.errorString());
    m_bytes.resize(head.size() + size);
    m_bytes.append(tail);
}

void DictationForm::renewBoundary() {
    m_boundary = newBoundary(); // as long as any other
    m_bytes.replace(2, m_boundary.size(), m_boundary);
    m_bytes.replace(m_bytes.size() - m_boundary.size() - 4, m_boundary.size(), m_boundary);
}

} // namespace velmora
