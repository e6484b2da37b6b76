#include <gtest/gtest.h>

#include <QProcess>
#include <QTemporaryDir>

#include "desktop/CommandLine.h"

namespace quoll {
namespace {

CommandLine Read(std::vector<const char*> arguments) { return ReadCommandLine(arguments); }

TEST(CommandLine, Options) {
  const CommandLine line =
      Read({"--fullscreen", "--run", "--speed", "max", "--folder=roms", "a.cas", "b.dsk"});
  EXPECT_EQ(line.error, "");
  EXPECT_TRUE(line.fullScreen && line.run && line.max);
  EXPECT_FALSE(line.help || line.version);
  EXPECT_EQ(line.folder, "roms");
  EXPECT_EQ(line.files, (std::vector<std::string>{"a.cas", "b.dsk"}));
  EXPECT_EQ(Read({"--", "--run", "-x"}).files, (std::vector<std::string>{"--run", "-x"}));
  EXPECT_FALSE(Read({"--speed=normal"}).max);
  EXPECT_TRUE(Read({"-h"}).help);
  EXPECT_TRUE(Read({"--version"}).version);
}

TEST(CommandLine, AScriptTakesTheRest) {
  const CommandLine line = Read({"--folder", "roms", "--script", "a.lua", "--run", "b"});
  EXPECT_EQ(line.script, "a.lua");
  EXPECT_FALSE(line.run);
  EXPECT_EQ(line.files, (std::vector<std::string>{"--run", "b"}));
}

TEST(CommandLine, WhatIsWrongIsSaid) {
  EXPECT_EQ(Read({"--sped"}).error, "there is no option --sped");
  EXPECT_EQ(Read({"--speed", "2x"}).error, "--speed is max or normal, not 2x");
  EXPECT_EQ(Read({"--folder"}).error, "--folder needs a value");
  EXPECT_EQ(Read({}).error, "");
}

// The program itself; no display is there for it.
struct Answer {
  int status;
  QByteArray out, err;
};
Answer Ask(const QStringList& arguments) {
  QProcess program;
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  environment.insert("QT_QPA_PLATFORM", "xcb");
  for (const char* display : {"DISPLAY", "WAYLAND_DISPLAY"}) environment.remove(display);
  program.setProcessEnvironment(environment);
  program.start(QUOLLEMU_PROGRAM, arguments);
  program.waitForFinished();
  return {program.exitCode(), program.readAllStandardOutput(), program.readAllStandardError()};
}

TEST(CommandLine, HelpAndVersionNeedNoDisplay) {
  const Answer help = Ask({"--help"});
  EXPECT_EQ(help.status, 0);
  EXPECT_EQ(help.out, kHelpText);
  const Answer version = Ask({"--fullscreen", "--version"});
  EXPECT_EQ(version.status, 0);
  EXPECT_EQ(version.out, "quollemu 3.1\n");
}

TEST(CommandLine, AScriptRunsWithoutADisplay) {
  const QTemporaryDir folder;
  QFile script(folder.filePath("a.lua"));
  ASSERT_TRUE(script.open(QIODevice::WriteOnly));
  script.write("print(arg[1], Frames(2))");
  script.close();
  const Answer answer = Ask({"--script", script.fileName(), "word"});
  EXPECT_EQ(answer.out, "word\t2\n") << answer.err.toStdString();
}

}  // namespace
}  // namespace quoll
