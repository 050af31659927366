#include "standins/ReceivedForm.h"

namespace tessary::standins {

std::optional<ReceivedForm> readForm(const QByteArray& contentType, const QByteArray& body)
{
    constexpr char announcement[] = "multipart/form-data; boundary=";
    if (!contentType.startsWith(announcement)) {
        return std::nullopt;
    }
    const QByteArray delimiter = "\r\n--" + contentType.mid(static_cast<qsizetype>(sizeof announcement) - 1);
    const QByteArray nameStart = "\r\nContent-Disposition: form-data; name=\"";
    const QByteArray nameEnd = "\"\r\n\r\n";

    const QByteArray framed = "\r\n" + body;
    ReceivedForm form;
    qsizetype start = delimiter.size();
    for (qsizetype next = framed.startsWith(delimiter) ? framed.indexOf(delimiter, start) : -1; next >= 0;
         next = framed.indexOf(delimiter, start)) {
        const QByteArray part = framed.mid(start, next - start);
        const qsizetype valueStart = part.indexOf(nameEnd);
        if (!part.startsWith(nameStart) || valueStart < 0) {
            return std::nullopt;
        }
        const QByteArray name = part.mid(nameStart.size(), valueStart - nameStart.size());
        form.insert(QString::fromUtf8(name), QString::fromUtf8(part.mid(valueStart + nameEnd.size())));
        start = next + delimiter.size();
    }
    return framed.mid(start) == "--\r\n" ? std::optional(form) : std::nullopt;
}

} // namespace tessary::standins
