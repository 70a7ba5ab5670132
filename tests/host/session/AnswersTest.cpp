// Nobody is asked the same twice of the same file, and nobody to ask has said nothing.
#include <gtest/gtest.h>

#include "host/session/Answers.h"

TEST(Answers, AreKeptForEachQuestionOfEachFile) {
  host::Answers answers;
  int asked = 0;
  const auto say = [&](bool answer) {
    return [&asked, answer](const std::string& question) {
      ++asked;
      EXPECT_EQ(question.substr(0, 5), "Take ");
      return answer;
    };
  };
  EXPECT_TRUE(answers.ask("a", "Take it?", say(true)));
  EXPECT_TRUE(answers.ask("a", "Take it?", say(false)));
  EXPECT_EQ(asked, 1);
  EXPECT_FALSE(answers.ask("b", "Take it?", say(false)));
  EXPECT_FALSE(answers.ask("a", "Take that?", say(false)));
  EXPECT_EQ(asked, 3);
  EXPECT_TRUE(answers.ask("a", "Take it?", say(false)));
  EXPECT_FALSE(answers.ask("b", "Take it?", say(true)));
  EXPECT_EQ(asked, 3);
}

TEST(Answers, NobodyToAskSaysNoAndSomebodyIsAskedLater) {
  host::Answers answers;
  EXPECT_FALSE(answers.ask("a", "Take it?", nullptr));
  EXPECT_TRUE(answers.ask("a", "Take it?", [](const std::string&) { return true; }));
  EXPECT_TRUE(answers.ask("a", "Take it?", nullptr));
}
