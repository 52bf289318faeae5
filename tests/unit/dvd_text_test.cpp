#include <gtest/gtest.h>

#include <algorithm>
#include <array>

#include "devices/dvd/language.h"
#include "devices/dvd/render_report.h"

namespace quorvex {
namespace {

struct Written {
  std::size_t size;
  std::string text;
};

Written Report(const RenderFindings& findings, std::size_t room = 1000) {
  std::string text(room, '#');
  const std::size_t size = WriteRenderReport(findings, text);
  text.resize(std::min(text.find('\0'), text.size()));
  return {size, text};
}

TEST(RenderReportTest, EveryFindingHasItsLineAndTheLastHasNoNewline) {
  RenderFindings streams;
  streams.streams = 5;
  streams.streamsFailed = 2;
  streams.failedKinds = 2 | 4;
  streams.volumeInvalid = true;
  streams.volumeUnknown = true;
  RenderFindings rest;
  rest.failedKinds = 7;
  rest.overlayError = "No overlay.";
  rest.volumeUnknown = rest.noCaptionsIn = rest.noCaptionsOut = true;
  RenderFindings nameless;
  nameless.overlayError = "";
  RenderFindings allStreams;
  allStreams.streams = allStreams.streamsFailed = 3;
  allStreams.failedKinds = 7;
  const std::pair<RenderFindings, std::string> cases[] = {
      {streams,
       "* 2 out of 5 DVD-Video streams failed to render properly\n    - audio stream\n    - subpicture "
       "stream\n"
       "* Specified DVD-Video volume was invalid"},
      {rest,
       "* No overlay.\n* No valid DVD-Video volume could be located\n"
       "* The video decoder doesn't produce closed caption data\n"
       "* Decoded closed caption data not rendered properly"},
      {nameless, "* "},
      {allStreams,
       "* 3 out of 3 DVD-Video streams failed to render properly\n    - video stream\n    - audio stream\n"
       "    - subpicture stream"},
  };
  for (const auto& [findings, text] : cases) {
    const Written written = Report(findings);
    EXPECT_EQ(written.text, text);
    EXPECT_EQ(written.size, text.size() + 1);
  }
}

TEST(RenderReportTest, WhatDoesNotFitIsCutAndNothingToSayIsNotWritten) {
  RenderFindings findings;
  findings.volumeUnknown = true;
  const std::string whole = "* No valid DVD-Video volume could be located";
  EXPECT_EQ(Report(findings, 45).text, whole) << "the newline's place holds the zero";
  EXPECT_EQ(Report(findings, 44).text, whole.substr(0, 43));
  EXPECT_EQ(Report(findings, 1).size, 1U);
  EXPECT_EQ(WriteRenderReport(findings, {}), 0U);
  EXPECT_EQ(Report({}, 4).size, 0U);
  EXPECT_EQ(Report({}, 4).text, "####");
}

TEST(LanguageTest, CodesHaveNamesInLowerCaseAndInAttributesInAny) {
  std::string name;
  EXPECT_TRUE(LanguageNameFromCode("sv", name));
  EXPECT_EQ(name, "Swedish");
  for (const char* code : {"it", "DE", "d", "deu", ""}) {
    EXPECT_FALSE(LanguageNameFromCode(code, name)) << code;
    EXPECT_EQ(name, "Unknown") << code;
  }
  const auto named = [](std::uint8_t first, std::uint8_t second) {
    return LanguageInAttributes(std::array<std::uint8_t, 6>{'e', 'n', first, second, 'f', 'r'});
  };
  EXPECT_EQ(named('D', 'e'), "German");
  for (const std::uint8_t none : {std::uint8_t{0}, std::uint8_t{0xFF}})
    EXPECT_EQ(named(none, none), "Unknown");
}

}  // namespace
}  // namespace quorvex
