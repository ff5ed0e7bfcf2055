#pragma once

#include "zanbench/HostDialogs.h"
#include "zanbench/MainWindow.h"
#include "zanbench/Settings.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

#include <deque>

/// Dialogs that a test answers, and that write down what they were asked.
class FakeDialogs : public zan::host::HostDialogs
{
public:
    Unsaved unsavedAnswer = Unsaved::Cancel;
    Conflict conflictAnswer = Conflict::Cancel;
    Edits editsAnswer = Edits::Later;
    bool replaceAnswer = false;
    QString chosenScheme, chosenTarget, chosenNew, chosenOlderWindow;
    QStringList unsavedQuestions, conflicts, editsQuestions, replaceQuestions, errors;

    Unsaved askUnsaved(const QString& name) override
    {
        unsavedQuestions.append(name);
        return unsavedAnswer;
    }
    Conflict askConflict(const QString& text) override
    {
        conflicts.append(text);
        return conflictAnswer;
    }
    Edits askEdits(const QString& text, const QString& detail) override
    {
        editsQuestions.append(text + QLatin1Char('\n') + detail);
        return editsAnswer;
    }
    QString chooseScheme(const QString&) override { return chosenScheme; }
    QString chooseNew(const QString&) override { return chosenNew; }
    QString chooseTarget(const QString&) override { return chosenTarget; }
    QString chooseOlderWindow(const QString&) override { return chosenOlderWindow; }
    bool askReplace(const QString& text) override
    {
        replaceQuestions.append(text);
        return replaceAnswer;
    }
    void showError(const QString& text) override { errors.append(text); }
    void showAbout(const QString&) override {}
};

/// A folder of its own with a small scheme in it, settings that nobody else sees, and a clock that stands still.
class HostTest : public testing::Test
{
protected:
    static constexpr int DeadlineMilliseconds = 20'000;

    HostTest()
        : settings(path("settings.ini"))
    {
        writeScheme();
    }
    ~HostTest() override { QDir::setCurrent(m_formerFolder); }

    QString path(const QString& name) const { return m_folder.filePath(name); }
    QString schemePath() const { return path("site.scheme"); }

    void writeScheme(const QByteArray& extra = {}) const
    {
        write("site.scheme",
              "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
              "<SCHEME><NAME>Test site</NAME><LOGGER>sim:?connect=0&amp;period=20&amp;wave.16=const:42</LOGGER>"
              "<WINDOW><KEY>First</KEY>"
              "<CHANNEL><KEY>A</KEY><LABEL>Level</LABEL><UNITS>m</UNITS><BASEADDRESS>16</BASEADDRESS>"
              "<BYTES>1</BYTES><MULTIPLIER>1</MULTIPLIER></CHANNEL>"
              "<CONTAINER/><CONTROL><TYPE>VB.Label</TYPE><LEFT>150</LEFT><TOP>300</TOP><WIDTH>6000</WIDTH>"
              "<HEIGHT>4500</HEIGHT><BINDTO>First|A</BINDTO></CONTROL></WINDOW>"
              "<WINDOW><KEY>Second</KEY><CONTAINER/><CONTROL><TYPE>VB.TextBox</TYPE><WIDTH>1500</WIDTH>"
              "<HEIGHT>300</HEIGHT></CONTROL></WINDOW>"
              "<WINDOW><KEY>LOGGER</KEY></WINDOW>" +
                  extra + "</SCHEME>\n");
    }
    void write(const QString& name, const QByteArray& content) const
    {
        QFile file(path(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(file.write(content), content.size());
    }
    QByteArray read(const QString& name) const
    {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    zan::host::OpenOptions offline() const
    {
        zan::host::OpenOptions options;
        options.scheme = schemePath();
        options.offline = true;
        return options;
    }

    QTemporaryDir m_folder;
    QString m_formerFolder = QDir::currentPath();
    std::int64_t now = 0;
    FakeDialogs dialogs;
    zan::host::Settings settings;
};
