// A reply on a screen of its own: the window manager, the controlled program and
// PostPet's stand-ins; each test has its own.
#pragma once
#include "store/search_tables.h"
#include "support/archive_fixture.h"
#include "support/lasting_program.h"
#include "support/test_screen.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>

#include <memory>

namespace tolvek::test {

constexpr int kPatience = 60000; // milliseconds

using Lines = std::vector<std::string>;

inline QProcessEnvironment onScreen(const TestScreen& screen, const std::filesystem::path& home)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("DISPLAY"), QString::fromStdString(screen.name()));
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
    for (const char* name : {"HOME", "XDG_RUNTIME_DIR", "XDG_CONFIG_HOME", "XDG_CACHE_HOME"})
        environment.insert(QLatin1String(name), QString::fromStdString(home.string()));
    return environment;
}

// A program that ends with the object.
class ChildProgram {
public:
    ~ChildProgram() { end(); }
    void start(const QProcessEnvironment& environment, const std::string& program,
               const QStringList& arguments)
    {
        process.setProcessEnvironment(environment);
        process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        process.start(QString::fromStdString(program), arguments);
    }
    void end()
    {
        if (process.state() == QProcess::NotRunning) return;
        process.kill();
        process.waitForFinished(kPatience);
    }

    QProcess process;
};

// PostPet20.exe in a folder of its own, and the record of what it received.
class StandIn {
public:
    explicit StandIn(const std::filesystem::path& folder, const std::string& settings = {})
        : program_(folder / "PostPet20.exe")
    {
        std::filesystem::create_directories(folder);
        std::filesystem::copy_file(STAND_IN, program_);
        if (!settings.empty()) set(settings);
    }
    ~StandIn()
    {
        for (const std::int32_t id : processesOf(program_))
            kill(id, SIGKILL);
    }
    StandIn(const StandIn&) = delete;
    StandIn& operator=(const StandIn&) = delete;

    void set(const std::string& settings) const
    {
        writeBytes(program_.string() + ".ini", settings);
    }
    // True once its window is shown with the keyboard focus, which needs a window
    // manager, or, if so asked, once it is only shown.
    bool run(const QProcessEnvironment& environment, const char* state = "ready")
    {
        child_.start(environment, program_.string(), {});
        return comesTrue([&] { return is(state); });
    }
    bool isReady() const
    {
        return comesTrue([this] { return is("ready"); });
    }
    bool is(const char* state) const { return record()[QLatin1String(state)].toBool(); }
    void end()
    {
        for (const std::int32_t id : processesOf(program_))
            kill(id, SIGKILL);
        child_.end();
        comesTrue([this] { return processesOf(program_).empty(); });
    }

    QJsonObject record() const
    {
        const std::string bytes = readBytes(program_.string() + ".record");
        return QJsonDocument::fromJson(QByteArray::fromStdString(bytes)).object();
    }
    std::string value(const char* field) const
    {
        return record()[QLatin1String(field)].toString().toStdString();
    }
    Lines order() const
    {
        Lines fields;
        for (const QJsonValue field : record()[QStringLiteral("order")].toArray())
            fields.push_back(field.toString().toStdString());
        return fields;
    }
    int mails() const { return record()[QStringLiteral("mails")].toInt(); }

private:
    std::filesystem::path program_;
    ChildProgram child_;
};

class ReplyScreen : public ArchiveFixture {
protected:
    void SetUp() override
    {
        ArchiveFixture::SetUp();
        home = std::filesystem::canonical(folder.path()) / "PostPet";
        environment = onScreen(screen, folder.path());
    }
    void TearDown() override
    {
        driver.end();
        ArchiveFixture::TearDown();
    }
    void givenManager()
    {
        const std::string mark = file("managed").string();
        manager.start(environment, "openbox",
                      {QStringLiteral("--sm-disable"), QStringLiteral("--startup"),
                       QString::fromStdString("touch " + mark)});
        ASSERT_TRUE(comesTrue([this] { return exists("managed"); })) << "is openbox installed?";
    }
    // The program with its first mail selected.
    void givenProgram()
    {
        edSearch_Addr();
        gDb.Close();
        writeBytes(file("TOLVEK.ini"), "[PostPet Mail Option]\r\nMy Mail Addr=taro@example.jp\r\n"
                                       "PostPet Dir=" +
                                           home.string() + "\r\n");
        driver.start(environment, REPLY_DRIVER, {QString::fromStdString(folder.path().string())});
        EXPECT_EQ(heard(), Lines{});
        EXPECT_EQ(tell("select 0"), Lines{});
    }
    // The lines that the program writes until "done".
    Lines tell(const std::string& command)
    {
        driver.process.write((command + "\n").c_str());
        return heard();
    }
    Lines heard()
    {
        Lines lines;
        for (;;) {
            QProcess& process = driver.process;
            if (!process.canReadLine() && !process.waitForReadyRead(kPatience)) {
                lines.emplace_back("ended");
                return lines;
            }
            while (process.canReadLine()) {
                const std::string line = process.readLine().trimmed().toStdString();
                if (line == "done") return lines;
                lines.push_back(line);
            }
        }
    }

    TestScreen screen;
    QProcessEnvironment environment;
    ChildProgram manager, driver;
    std::filesystem::path home;
};

}
