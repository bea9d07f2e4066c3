#pragma once

#include <QProcess>
#include <QString>
#include <QTemporaryDir>

#include <functional>
#include <memory>

namespace velmora::test {

/// A real program with an editor in it, started for a test. It has the keyboard focus once it is made; ends
/// with the object.
class TargetApplication {
public:
    [[nodiscard]] static std::unique_ptr<TargetApplication> mousepad();
    /// Its document is the bytes that a program inside the terminal has read.
    [[nodiscard]] static std::unique_ptr<TargetApplication> xterm();
    /// `program` is the path of the test program qt_editor, which pastes the pieces into itself.
    [[nodiscard]] static std::unique_ptr<TargetApplication> qtEditor(const QString& program,
                                                                     const QStringList& ownPieces = {});
    /// A page with a text area.
    [[nodiscard]] static std::unique_ptr<TargetApplication> chromium();
    [[nodiscard]] static std::unique_ptr<TargetApplication> gedit();
    [[nodiscard]] static std::unique_ptr<TargetApplication> gnomeTextEditor();
    /// A text field of Tk.
    [[nodiscard]] static std::unique_ptr<TargetApplication> tk();
    [[nodiscard]] static std::unique_ptr<TargetApplication> vteTerminal();
    /// LibreOffice.
    [[nodiscard]] static std::unique_ptr<TargetApplication> writer();
    /// A page with a text area.
    [[nodiscard]] static std::unique_ptr<TargetApplication> firefox();
    ~TargetApplication();

    /// Whether it started and got the focus.
    [[nodiscard]] bool isReady() const { return m_ready; }
    /// The text in its editor, as far as it has come; `expected` once it is there, else what there is after a
    /// while.
    [[nodiscard]] QString document(const QString& expected);
    void freeze();
    void thaw();

private:
    using Read = std::function<QString()>;

    TargetApplication();
    [[nodiscard]] static std::unique_ptr<TargetApplication>
    editorOfAFile(const QString& program, const QStringList& options, const QByteArray& windowClass);
    [[nodiscard]] QString catIntoTheDocument() const;
    bool takesKeys();
    void start(const QString& program, const QStringList& arguments, const QByteArray& windowClass);
    QString path(const char* name) const { return m_folder.filePath(QLatin1String(name)); }
    QString fileText(const char* name) const;

    QTemporaryDir m_folder;
    QProcess m_process;
    Read m_read;
    quint32 m_window = 0;
    bool m_ready = false;
};

} // namespace velmora::test
