// The life of a program with windows, and its settings.
#include <afxwin.h>

#include <climits>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "platform/Utf.h"
#include "tests/platform/windows/Robot.h"
#include "tests/platform/windows/ids.h"

namespace {

class Program : public CWinApp {
 public:
  Program() : CWinApp(_T("Tested")) {}

  BOOL InitInstance() override {
    done.emplace_back("init");
    m_pMainWnd = frame;
    return starts ? TRUE : FALSE;
  }
  BOOL OnIdle(LONG count) override {
    done.push_back("idle " + std::to_string(count));
    if (count == 2 && atIdle < toPost) {
      ++atIdle;
      ::PostMessageW(frame->m_hWnd, WM_APP, 0, 0);
    } else if (count >= 2) {
      frame->PostMessage(WM_CLOSE);
    }
    return count < 2 ? TRUE : FALSE;
  }
  BOOL PreTranslateMessage(MSG* message) override {
    if (message->message == WM_APP) {
      done.emplace_back("message");
      return TRUE;
    }
    return CWinApp::PreTranslateMessage(message);
  }
  int ExitInstance() override {
    done.emplace_back("exit");
    return 42;
  }

  bool starts = true;
  int toPost = 0;
  int atIdle = 0;
  CFrameWnd* frame = nullptr;
  std::vector<std::string> done;
};

// Without what the system itself sends in between: runs of idle counts that are cut short.
std::vector<std::string> withoutCutRuns(const std::vector<std::string>& done) {
  std::vector<std::string> whole;
  for (const std::string& what : done) {
    if (what == "idle 0") {
      while (!whole.empty() && (whole.back() == "idle 0" || whole.back() == "idle 1")) {
        whole.pop_back();
      }
    }
    whole.push_back(what);
  }
  return whole;
}

TEST(Program, RunsFromStartToEnd) {
  Program program;
  program.frame = new CFrameWnd;
  ASSERT_TRUE(program.frame->LoadFrame(IDR_FRAME));
  EXPECT_EQ(AfxWinMain(SW_SHOWMINIMIZED), 42);
  EXPECT_EQ(program.m_nCmdShow, SW_SHOWMINIMIZED);
  EXPECT_EQ(program.m_pMainWnd, nullptr);
  const std::vector<std::string> expected = {"init", "idle 0", "idle 1", "idle 2", "exit"};
  EXPECT_EQ(withoutCutRuns(program.done), expected);
}

TEST(Program, IsIdleAnewBehindEachMessage) {
  Program program;
  program.frame = new CFrameWnd;
  program.toPost = 2;
  ASSERT_TRUE(program.frame->LoadFrame(IDR_FRAME));
  program.m_pMainWnd = program.frame;
  EXPECT_EQ(program.Run(), 42);
  const std::vector<std::string> expected = {"idle 0", "idle 1",  "idle 2", "message", "idle 0", "idle 1",
                                             "idle 2", "message", "idle 0", "idle 1",  "idle 2", "exit"};
  EXPECT_EQ(withoutCutRuns(program.done), expected);
}

TEST(Program, ThatDoesNotStartEndsItsWindowAndHandlesNothing) {
  Program program;
  program.starts = false;
  program.frame = new CFrameWnd;
  ASSERT_TRUE(program.frame->LoadFrame(IDR_FRAME));
  const HWND window = program.frame->m_hWnd;
  EXPECT_EQ(AfxWinMain(SW_SHOW), 42);
  EXPECT_FALSE(::IsWindow(window));
  EXPECT_EQ(program.done, (std::vector<std::string>{"init", "exit"}));
  MSG message = {};
  EXPECT_TRUE(::PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
}

TEST(Program, StartsAndIsIdleByDefault) {
  CWinApp program(_T("Plain"));
  EXPECT_TRUE(program.InitInstance());
  EXPECT_FALSE(program.OnIdle(0));
  EXPECT_EQ(program.ExitInstance(), 0);
}

class Profile : public testing::Test {
 protected:
  Profile() { m_program.SetRegistryKey(_T("Dipole test settings")); }
  ~Profile() override { ::RegDeleteTreeW(HKEY_CURRENT_USER, L"Software\\Dipole test settings"); }

  std::string text(LPCTSTR entry, LPCTSTR otherwise = nullptr) {
    return toUtf8(m_program.GetProfileString(_T("Section"), entry, otherwise));
  }

  CWinApp m_program{_T("Tested")};
};

TEST_F(Profile, GivesTheDefaultForWhatIsNotThere) {
  EXPECT_EQ(m_program.GetProfileInt(_T("Section"), _T("None"), 7), 7U);
  EXPECT_EQ(text(_T("None"), _T("other")), "other");
  EXPECT_EQ(text(_T("None")), "");
  ASSERT_TRUE(m_program.WriteProfileInt(_T("Section"), _T("One"), 1));
  EXPECT_EQ(m_program.GetProfileInt(_T("Section"), _T("None"), 7), 7U);
}

TEST_F(Profile, KeepsNumbersAndTexts) {
  ASSERT_TRUE(m_program.WriteProfileInt(_T("Section"), _T("Number"), -5));
  ASSERT_TRUE(m_program.WriteProfileInt(_T("Section"), _T("Largest"), INT_MAX));
  ASSERT_TRUE(m_program.WriteProfileString(_T("Section"), _T("Text"), _T("C:\\\u00E4 \u20AC\\set.dipset")));
  ASSERT_TRUE(m_program.WriteProfileString(_T("Section"), _T("Empty"), _T("")));
  CWinApp again(_T("Tested"));
  again.SetRegistryKey(_T("Dipole test settings"));
  EXPECT_EQ(static_cast<int>(again.GetProfileInt(_T("Section"), _T("Number"), 7)), -5);
  EXPECT_EQ(again.GetProfileInt(_T("Section"), _T("Largest"), 7), UINT{INT_MAX});
  EXPECT_EQ(toUtf8(again.GetProfileString(_T("Section"), _T("Text"))), "C:\\ä €\\set.dipset");
  EXPECT_EQ(toUtf8(again.GetProfileString(_T("Section"), _T("Empty"), _T("other"))), "");
}

TEST_F(Profile, StandsBelowKeyAndProgram) {
  ASSERT_TRUE(m_program.WriteProfileInt(_T("Section"), _T("Number"), 3));
  DWORD value = 0;
  DWORD size = sizeof value;
  EXPECT_EQ(::RegGetValueW(HKEY_CURRENT_USER, L"Software\\Dipole test settings\\Tested\\Section", L"Number",
                           RRF_RT_REG_DWORD, nullptr, &value, &size),
            ERROR_SUCCESS);
  EXPECT_EQ(value, 3U);
}

TEST_F(Profile, LaterValuesReplaceEarlierOnes) {
  m_program.WriteProfileString(_T("Section"), _T("Text"), _T("a longer one"));
  m_program.WriteProfileString(_T("Section"), _T("Text"), _T("short"));
  EXPECT_EQ(text(_T("Text")), "short");
  m_program.WriteProfileInt(_T("Section"), _T("Number"), 1);
  m_program.WriteProfileInt(_T("Section"), _T("Number"), 2);
  EXPECT_EQ(m_program.GetProfileInt(_T("Section"), _T("Number"), 7), 2U);
}

TEST_F(Profile, ValueOfTheOtherKindIsNone) {
  m_program.WriteProfileString(_T("Section"), _T("Text"), _T("12"));
  m_program.WriteProfileInt(_T("Section"), _T("Number"), 1);
  EXPECT_EQ(m_program.GetProfileInt(_T("Section"), _T("Text"), 7), 7U);
  EXPECT_EQ(text(_T("Number"), _T("other")), "other");
}

TEST_F(Profile, NullRemovesATextOnce) {
  m_program.WriteProfileString(_T("Section"), _T("Text"), _T("there"));
  EXPECT_TRUE(m_program.WriteProfileString(_T("Section"), _T("Text"), nullptr));
  EXPECT_EQ(text(_T("Text"), _T("gone")), "gone");
  EXPECT_FALSE(m_program.WriteProfileString(_T("Section"), _T("Text"), nullptr));
}

TEST(ProfileWithoutKey, ReadsDefaultsAndWritesNothing) {
  CWinApp program(_T("Tested"));
  EXPECT_FALSE(program.WriteProfileInt(_T("Section"), _T("Number"), 3));
  EXPECT_FALSE(program.WriteProfileString(_T("Section"), _T("Text"), _T("x")));
  EXPECT_EQ(program.GetProfileInt(_T("Section"), _T("Number"), 7), 7U);
  EXPECT_EQ(toUtf8(program.GetProfileString(_T("Section"), _T("Text"), _T("other"))), "other");
}

}  // namespace
