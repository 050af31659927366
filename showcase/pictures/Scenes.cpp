#include "showcase/pictures/Scenes.h"

#include "ui/keys/KeyForm.h"

#include <QQuickItem>
#include <QTest>

namespace tessary::pictures {

using testkit::ProgramFixture;

namespace {

const QUrl clip = QUrl::fromLocalFile(QStringLiteral("/home/ada/Videos/Harbour at dawn.mov"));
const QUrl left = QUrl::fromLocalFile(QStringLiteral("/home/ada/Videos/harbour-left.mov"));
const QUrl right = QUrl::fromLocalFile(QStringLiteral("/home/ada/Videos/harbour-right.mov"));

/// Without asking the service.
void signIn(ProgramFixture& program, const QString& workspaceName)
{
    program.session().setApiKey(QStringLiteral("key"));
    Workspace workspace{};
    workspace.workspaceName = workspaceName;
    program.session().setWorkspaceData(workspace);
}

/// As the login screen does it; the check fails.
void failToSignIn(ProgramFixture& program)
{
    KeyForm form;
    form.setProperty("sessionManager", QVariant::fromValue(&program.session()));
    form.setApiKey(QStringLiteral("key"));
    form.submitKey();
    if (!QTest::qWaitFor([&program] { return !program.session().signInProblem().isEmpty(); })) {
        qFatal("the check did not fail");
    }
}

void showUploader(ProgramFixture& program)
{
    signIn(program, QStringLiteral("Northern Lights Studio"));
}

void fillIn(ProgramFixture& program)
{
    showUploader(program);
    program.state().setSelectedFile(clip);
    program.state().setStatusMessage(QStringLiteral("Selected: Harbour at dawn.mov"));
    program.state().setVideoName(QStringLiteral("Harbour at dawn"));
}

/// As the tool tells how far it is.
void report(ProgramFixture& program, std::initializer_list<const char*> percents)
{
    for (const char* percent : percents) {
        program.state().processOutput(
            QStringLiteral(
                "\r%1 %, 0 Done, 0 Failed, 1 Pending, 0 Skipped, 1 Total, 2-sec Throughput (Mb/s): 80.25")
                .arg(QLatin1StringView(percent)));
    }
}

void upload(ProgramFixture& program)
{
    fillIn(program);
    program.state().enter(UploadState::Requesting);
    program.state().enter(UploadState::Uploading);
    program.state().processOutput(QStringLiteral("Received Upload Sessions\n"));
    report(program, {"0.0", "14.2", "30.1", "45.5"});
}

void separateEyes(ProgramFixture& program, bool both)
{
    showUploader(program);
    program.state().selectFormat(QStringLiteral("Separate"));
    program.state().setSelectedFileLeft(left);
    if (both) {
        program.state().setSelectedFileRight(right);
        program.state().setVideoName(QStringLiteral("Harbour at dawn"));
    }
}

void hover(ProgramFixture& program)
{
    fillIn(program);
    program.state().setIsHeaderHovered(true);
    program.state().setHovered(QStringLiteral("2D"), true);
}

void focusName(ProgramFixture& program)
{
    showUploader(program);
    QTest::qWait(100);
    program.item("formatOption:2D")->forceActiveFocus(Qt::TabFocusReason);
}

void failWith(ProgramFixture& program, const QString& error)
{
    program.state().enter(UploadState::Failed, error);
    program.state().processOutput(QStringLiteral("Upload Error: ") + error);
    ToolReport words;
    words.hear(QStringLiteral("UPLOADFAILED: %1 : 403 : 403 Server failed to authenticate the request. "
                              "When Committing block list.")
                   .arg(clip.toLocalFile()));
    program.state().takeToolReport(words);
}

void fail(ProgramFixture& program)
{
    upload(program);
    failWith(program, QStringLiteral("AzCopy exited with code 1"));
}

void explain(ProgramFixture& program)
{
    fail(program);
    program.state().failureReport()->setProperty("shown", true);
}

void complete(ProgramFixture& program)
{
    upload(program);
    report(program, {"62.7", "79.4", "100.0"});
    program.state().enter(UploadState::Completed);
    program.state().setShowSuccessAnimation(true);
    program.state().processOutput(QStringLiteral("Video uploaded. Library ID: 812, Name: Harbour at dawn\n"));
}

void overflow(ProgramFixture& program)
{
    signIn(program, QStringLiteral("W").repeated(300));
    program.state().setSelectedFile(
        QUrl::fromLocalFile(QStringLiteral("/%1.mov").arg(QStringLiteral("name ").repeated(50))));
    program.state().setVideoName(QStringLiteral("a very long name ").repeated(300));
    program.state().processOutput(QStringLiteral("x").repeated(9000));
    failWith(program, QStringLiteral("long ").repeated(99));
}

} // namespace

std::vector<Scene> scenes()
{
    const auto nothing = [](ProgramFixture& /*program*/) {};
    return {
        {QStringLiteral("login"), nothing, true},
        {QStringLiteral("login-failed"), [](ProgramFixture& program) { failToSignIn(program); }, true},
        {QStringLiteral("change-key"),
         [](ProgramFixture& program) {
             showUploader(program);
             program.application().appManager()->setEditingAPIKey(true);
         }},
        {QStringLiteral("uploader-loading"),
         [](ProgramFixture& program) { program.session().setApiKey(QStringLiteral("key")); }},
        {QStringLiteral("uploader-empty"), showUploader},
        {QStringLiteral("uploader-file"), fillIn},
        {QStringLiteral("uploader-hover"), hover},
        {QStringLiteral("uploader-focus"), focusName, true},
        {QStringLiteral("uploader-separate-one"),
         [](ProgramFixture& program) { separateEyes(program, false); }},
        {QStringLiteral("uploader-separate-both"),
         [](ProgramFixture& program) { separateEyes(program, true); }},
        {QStringLiteral("uploader-immersive"),
         [](ProgramFixture& program) {
             fillIn(program);
             program.state().selectFormat(QStringLiteral("Apple Immersive Video (.aivu)"));
         }},
        {QStringLiteral("uploader-uploading"), upload, true},
        {QStringLiteral("uploader-details-hidden"),
         [](ProgramFixture& program) {
             upload(program);
             program.state().setShowDetails(false);
         }},
        {QStringLiteral("uploader-failed"), fail},
        {QStringLiteral("uploader-why"), explain},
        {QStringLiteral("uploader-completed"), complete, true},
        {QStringLiteral("uploader-overflow"), overflow},
        {QStringLiteral("uploader-quit"),
         [](ProgramFixture& program) {
             upload(program);
             // Without it the program would quit. It goes with the window.
             const auto underWay = program.application().uploadActivity()->beginRegistration();
             QObject::connect(&program.window(), &QObject::destroyed, [underWay] {});
             program.press(Qt::Key_Q, Qt::ControlModifier);
         },
         true},
    };
}

} // namespace tessary::pictures
