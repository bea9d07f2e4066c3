#include "pages/account_page.h"

#include "pages/entry_form.h"

#include <sstream>

namespace velmora::server {

HtmlPage AccountEntryPage::render() const {
    const EntryForm form{.path = "/account",
                         .hidden = hiddenField("form_token", formToken),
                         .email = email,
                         .problem = problem,
                         .localName = localName};
    return HtmlPage::make(
        "Аккаунт Velmora", {},
        "<h1>Аккаунт Velmora</h1><p>Войдите, чтобы сменить пароль или завершить сеансы.</p>" + form.render());
}

HtmlPage AccountPage::render() const {
    const auto form = R"(<form method="post" action="/account">)" + hiddenField("account", accountId) +
                      hiddenField("form_token", formToken);
    std::ostringstream body;
    body << R"(<h1>Аккаунт Velmora</h1><p class="name">)" << escapeHtml(email) << "</p>" << alarm(problem);
    if (!notice.empty()) {
        body << R"(<p class="notice" role="status">)" << escapeHtml(notice) << "</p>";
    }
    body << "<h2>Сеансы</h2>";
    if (sessions == 0) {
        body << "<p>Открытых сеансов нет.</p>";
    } else {
        body
            << "<p>Открыто сеансов: " << sessions << ". Завершите их, и Velmora выйдет из аккаунта "
            << "на всех устройствах.</p>" << form
            << R"(<button class="button" name="action" value="end_sessions">Завершить все сеансы</button></form>)";
    }
    body << "<h2>Пароль</h2>";
    if (hasPassword) {
        body
            << "<p>Со сменой пароля завершатся и все сеансы.</p>" << form
            << passwordField("Текущий пароль", "password", "current-password")
            << passwordField("Новый пароль, не меньше 8 символов", "new_password", "new-password")
            << R"(<button class="button" name="action" value="change_password">Сменить пароль</button></form>)";
    } else {
        body << "<p>Этот аккаунт без пароля: в него входит только пользователь этого компьютера.</p>";
    }
    return HtmlPage::make("Аккаунт Velmora", {}, body.str());
}

} // namespace velmora::server
