#include "app/sessiontext.h"
#include "tests/fuzz/fuzz.h"

using fuzz::check;

/// Any text is read as a session, written and read again. Both readings must be the same.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view text = fuzz::Input(data, size).rest();
    const auto session = app::readSession(text, {});
    check(session.has_value() == app::startsSession(text));
    if (!session)
        return 0;
    check(session->rows >= app::kLeastCount && session->rows <= app::kMostCount);
    check(session->results.ResultCursor >= 1 && session->results.ResultCursor <= app::kMaxResults);

    const std::string written = app::writeSession(*session);
    const auto again = app::readSession(written, {});
    check(again && again->panel == session->panel && again->cells == session->cells);
    check(again->results.ResultRowEnd == session->results.ResultRowEnd);
    check(app::writeSession(*again) == written);
    return 0;
}
