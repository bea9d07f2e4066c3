#include "pages/entry_form.h"

#include <sstream>

namespace velmora::server {

std::string EntryForm::render() const {
    std::ostringstream html;
    const auto form = R"(<form method="post" action=")" + path + "\">" + hidden;
    html << alarm(problem);
    if (localName) {
        html << form << R"(<button class="button primary" name="action" value="local">Продолжить как )"
             << escapeHtml(*localName) << R"(</button></form><div class="or">или</div>)";
    }
    html
        << form
        << R"(<label>Почта<input type="email" name="email" required maxlength="254" autocomplete="username" value=")"
        << escapeHtml(email) << R"("></label>)"
        << passwordField(creates ? "Пароль, не меньше 8 символов" : "Пароль", "password", "current-password")
        << R"(<button class="button)" << (localName ? "" : " primary")
        << R"(" name="action" value="sign_in">Войти</button>)";
    if (creates) {
        html << R"(<button class="button" name="action" value="create">Создать аккаунт</button>)";
    }
    html << "</form>";
    return html.str();
}

std::string alarm(std::string_view problem) {
    return problem.empty() ? std::string()
                           : R"(<p class="alarm" role="alert">)" + escapeHtml(problem) + "</p>";
}

std::string hiddenField(std::string_view name, std::string_view value) {
    std::ostringstream html;
    html << R"(<input type="hidden" name=")" << name << R"(" value=")" << escapeHtml(value) << R"(">)";
    return html.str();
}

std::string passwordField(std::string_view label, std::string_view name, std::string_view autocomplete) {
    std::ostringstream html;
    html << "<label>" << label << R"(<input type="password" name=")" << name
         << R"(" required maxlength="256" autocomplete=")" << autocomplete << R"("></label>)";
    return html.str();
}

} // namespace velmora::server
