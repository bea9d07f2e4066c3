#pragma once

#include <QByteArray>
#include <QString>

namespace velmora {

/// A multipart form whose one part is a recording. Recordings can be long: the file is read into its place,
/// once, and never copied.
class DictationForm {
public:
    /// Throws Error when the file can't be read.
    DictationForm(const QString& path, const QString& mimeType);

    /// For another request with the same recording.
    void renewBoundary();

    [[nodiscard]] QByteArray contentType() const { return "multipart/form-data; boundary=" + m_boundary; }
    [[nodiscard]] const QByteArray& bytes() const { return m_bytes; }

private:
    QByteArray m_boundary;
    QByteArray m_bytes;
};

} // namespace velmora
