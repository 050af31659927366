#include "service/Error.h"
#include "service/MultipartForm.h"
#include "service/VideoFormat.h"

#include <QTest>

using namespace tessary;

/// The words that are agreed with the service and with people: formats, perspectives, forms, errors.
class VocabularyTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void formats_data();
    void formats();
    void perspectives_data();
    void perspectives();
    void formFields();
    void errorsNameTheirTypeAndCase();
};

void VocabularyTest::formats_data()
{
    QTest::addColumn<QString>("code");
    QTest::addColumn<bool>("is3D");
    const auto row = [](const char* name, const char* code, bool is3D) {
        QTest::newRow(name) << QString::fromLatin1(code) << is3D;
    };
    row("2D", "2D", false);
    row("Stereoscopic Left/Right", "SBS", true);
    row("Stereoscopic Top/Bottom", "TB", true);
    row("Spatial (MV-HEVC)", "Spatial", true);
    row("Apple Immersive Video (.aivu)", "AIV", true);
    row("Separate", "Separate", true);
    row("2d", "SBS", true);
    row("", "SBS", true);
}

void VocabularyTest::formats()
{
    QFETCH(QString, code);
    QFETCH(bool, is3D);
    const QString name = QString::fromLatin1(QTest::currentDataTag());
    QCOMPARE(VideoFormat::fileFormatCode(name), code);
    QCOMPARE(VideoFormat::is3D(name), is3D);
}

void VocabularyTest::perspectives_data()
{
    QTest::addColumn<qint64>("number");
    const auto row = [](const char* text, qint64 number) { QTest::newRow(text) << number; };
    row("60", 60);
    row("360", 360);
    row("+5", 5);
    row("-5", -5);
    row("007", 7);
    row("-9223372036854775808", std::numeric_limits<qint64>::min());
    for (const char* unreadable :
         {"", "+", "+-5", "++5", " 60", "60 ", "60.0", "6e1", "9223372036854775808", "６０"}) {
        row(unreadable, 180);
    }
}

void VocabularyTest::perspectives()
{
    QFETCH(qint64, number);
    QCOMPARE(VideoFormat::perspectiveNumber(QString::fromUtf8(QTest::currentDataTag())), number);
}

void VocabularyTest::formFields()
{
    const QByteArray boundary = makeBoundary();
    const QRegularExpression form(QStringLiteral("^Boundary-[0-9A-F]{8}(-[0-9A-F]{4}){3}-[0-9A-F]{12}$"));
    QVERIFY(form.match(QString::fromLatin1(boundary)).hasMatch());
    QVERIFY(makeBoundary() != boundary);

    QByteArray body;
    appendFormField(QStringLiteral("name"), QString::fromUtf8("a\"b\r\nü"), body, "B");
    appendClosingLine(body, "B");
    QCOMPARE(body, QByteArray(
                       "--B\r\nContent-Disposition: form-data; name=\"name\"\r\n\r\na\"b\r\nü\r\n--B--\r\n"));
}

void VocabularyTest::errorsNameTheirTypeAndCase()
{
    const Error error = toError(LibraryDataError::insertError);
    QCOMPARE(error.domain(), QStringLiteral("tessary_macos_uploader.LibraryDataError"));
    QCOMPARE(error.code(), 1);
    try {
        throw std::runtime_error("a reason");
    } catch (const std::exception&) {
        const Error caught = caughtError();
        QCOMPARE(caught.domain() + QString::number(caught.code()), QStringLiteral("std::exception0"));
        QCOMPARE(caught.description(), QStringLiteral("Something unexpected went wrong: a reason"));
    }
    QCOMPARE(toError(APIServiceError::invalidURL).description(),
             QStringLiteral(
                 "The operation couldn’t be completed. (tessary_macos_uploader.APIServiceError error 0.)"));
}

QTEST_APPLESS_MAIN(VocabularyTest)
#include "tst_vocabulary.moc"
