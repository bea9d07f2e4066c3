#pragma once

#include <QString>

#include <exception>

namespace velmora {

/// The root of every failure that an operation of this program reports.
class Error : public std::exception {
public:
    /// A sentence for the user.
    [[nodiscard]] virtual QString localizedDescription() const = 0;

    [[nodiscard]] const char* what() const noexcept override;

private:
    mutable QByteArray m_what;
};

/// A failure that has a description and nothing that anybody tells apart.
class PlainError : public Error {
public:
    explicit PlainError(QString description)
        : m_description(std::move(description)) {}

    [[nodiscard]] QString localizedDescription() const override { return m_description; }

private:
    QString m_description;
};

/// The description of whatever was thrown, also of foreign exceptions.
[[nodiscard]] QString describe(const std::exception_ptr& failure);

} // namespace velmora
