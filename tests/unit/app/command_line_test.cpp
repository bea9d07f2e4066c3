#include "app/command_line.h"

#include <gtest/gtest.h>

using namespace velmora;

namespace {

Launch parse(std::initializer_list<const char*> arguments) {
    QStringList list;
    for (const char* argument : arguments)
        list.append(QString::fromUtf8(argument));
    return parseCommandLine(list);
}

} // namespace

TEST(CommandLine, NoArguments_RunsAndActivates) {
    EXPECT_EQ(parse({}), Launch(launch::Run{instance_command::Activate{}}));
}

TEST(CommandLine, Verbs_ReachTheRunningInstance) {
    EXPECT_EQ(parse({"--press"}), Launch(launch::Send{instance_command::Press{}}));
    EXPECT_EQ(parse({"--release"}), Launch(launch::Send{instance_command::Release{}}));
    EXPECT_EQ(parse({"--toggle"}), Launch(launch::Send{instance_command::Toggle{}}));
}

TEST(CommandLine, SignInAndUrls_StartTheProgramWhenItIsNotRunning) {
    EXPECT_EQ(parse({"--sign-in"}), Launch(launch::Run{instance_command::SignIn{}}));
    EXPECT_EQ(parse({"velmora://auth?token=a"}),
              Launch(launch::Run{instance_command::OpenURL{QStringLiteral("velmora://auth?token=a")}}));
}

TEST(CommandLine, VersionAndHelp_AreKnown) {
    EXPECT_EQ(parse({"--version"}), Launch(launch::ShowVersion{}));
    EXPECT_EQ(parse({"--help"}), Launch(launch::ShowHelp{}));
    EXPECT_EQ(parse({"-h"}), Launch(launch::ShowHelp{}));
}

TEST(CommandLine, AnythingElse_IsNamed) {
    EXPECT_EQ(parse({"--pres"}), Launch(launch::Invalid{QStringLiteral("--pres")}));
    EXPECT_EQ(parse({"https://example.com"}), Launch(launch::Invalid{QStringLiteral("https://example.com")}));
    EXPECT_EQ(parse({"--press", "--release"}), Launch(launch::Invalid{QStringLiteral("--release")}));
}

TEST(CommandLine, Set_TakesAnyNumberOfChangesAndSplitsAtTheFirstEqualsSign) {
    EXPECT_EQ(parse({"--set", "hudSize=large"}),
              Launch(launch::SetSettings{{{QStringLiteral("hudSize"), QStringLiteral("large")}}}));
    EXPECT_EQ(parse({"--set", "hotkeyCustomLabel=⌃ =", "--set", "micUniqueID="}),
              Launch(launch::SetSettings{{{QStringLiteral("hotkeyCustomLabel"), QStringLiteral("⌃ =")},
                                          {QStringLiteral("micUniqueID"), QString()}}}));
}

TEST(CommandLine, SetOfSomethingElse_IsNamed) {
    EXPECT_EQ(parse({"--set"}), Launch(launch::Invalid{QStringLiteral("--set")}));
    EXPECT_EQ(parse({"--set", "hudSize"}), Launch(launch::Invalid{QStringLiteral("hudSize")}));
    EXPECT_EQ(parse({"--set", "=large"}), Launch(launch::Invalid{QStringLiteral("=large")}));
    EXPECT_EQ(parse({"--set", "a=b", "--set"}), Launch(launch::Invalid{QStringLiteral("--set")}));
    EXPECT_EQ(parse({"--set", "a=b", "--press"}), Launch(launch::Invalid{QStringLiteral("--press")}));
}

TEST(CommandLine, GetAndListSettings_AreKnown) {
    EXPECT_EQ(parse({"--get", "hudSize"}), Launch(launch::GetSetting{QStringLiteral("hudSize")}));
    EXPECT_EQ(parse({"--list-settings"}), Launch(launch::ListSettings{}));
    EXPECT_EQ(parse({"--get"}), Launch(launch::Invalid{QStringLiteral("--get")}));
    EXPECT_EQ(parse({"--list-settings", "more"}), Launch(launch::Invalid{QStringLiteral("more")}));
    EXPECT_TRUE(std::holds_alternative<launch::Invalid>(parse({"--get", "hudSize", "more"})));
}
