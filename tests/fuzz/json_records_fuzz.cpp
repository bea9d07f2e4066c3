// Records of the backend: what decodes must encode to something that decodes to the same.

#include "backend/backend_coder.h"
#include "backend/backend_error.h"
#include "backend/me_response.h"
#include "backend/preferences_patch.h"
#include "backend/tokens.h"
#include "fuzz.h"

using namespace velmora;

namespace {

struct Dated {
    Date date;
    static constexpr auto jsonFields() { return std::tuple(json::field("date", &Dated::date)); }
};

/// Dates lose their fractions on the first way out, and nothing after it.
template<typename Record>
void requireRoundTrip(const QByteArray& bytes) {
    try {
        const QByteArray once = backendCoder.encode(backendCoder.decode<Record>(bytes));
        const QByteArray twice = backendCoder.encode(backendCoder.decode<Record>(once));
        fuzz::require(once == twice, "a record survives the round trip");
    } catch (const json::DecodingError&) {
        return;
    }
}

void requireDateRoundTrip(const QString& text) {
    const std::optional<Date> date = parseISO8601(text);
    if (!date)
        return;
    const QString formatted = formatISO8601(*date);
    // An offset can lead out of the four-digit years at both ends.
    if (formatted.size() == 20)
        fuzz::require(parseISO8601(formatted) == std::chrono::floor<std::chrono::seconds>(*date),
                      "a date survives the round trip to the second");

    constexpr json::Coder local(json::DateForm::ReferenceSeconds);
    const Date back = local.decode<Dated>(local.encode(Dated{*date})).date;
    fuzz::require(std::chrono::abs(back - *date) < std::chrono::milliseconds(1),
                  "a date survives as a number to the millisecond");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const QByteArray bytes(reinterpret_cast<const char*>(data), qsizetype(size));
    requireRoundTrip<MeResponse>(bytes);
    requireRoundTrip<BackendErrorBody>(bytes);
    requireRoundTrip<BackendPreferences>(bytes);
    requireRoundTrip<PreferencesPatch>(bytes);
    requireRoundTrip<Tokens>(bytes);
    requireRoundTrip<std::vector<Dated>>(bytes);
    requireDateRoundTrip(QString::fromUtf8(bytes));
    return 0;
}
