// What crosses the border between a host and dipole.dll: device contexts, archives, exceptions, resources.
#include <afxwin.h>

#include <gtest/gtest.h>

#include "platform/Utf.h"
#include "tests/ui/windows/DialogUser.h"
#include "tests/ui/windows/Host.h"

namespace {

constexpr int side = 128;
constexpr COLORREF ground = RGB(9, 9, 9);

// A host's picture.
class Picture {
 public:
  Picture() {
    m_context.CreateCompatibleDC(nullptr);
    m_bitmap.CreateBitmap(side, side, 1, 32, nullptr);
    m_before = m_context.SelectObject(&m_bitmap);
    m_context.FillSolidRect(0, 0, side, side, ground);
  }
  ~Picture() { m_context.SelectObject(m_before); }
  Picture(const Picture&) = delete;
  Picture& operator=(const Picture&) = delete;

  CDC* context() { return &m_context; }

  // Left, top, width and height of what was drawn in a colour, and how many pixels.
  std::vector<int> drawn(COLORREF color) {
    int left = side;
    int top = side;
    int right = -1;
    int bottom = -1;
    int count = 0;
    for (int y = 0; y < side; ++y) {
      for (int x = 0; x < side; ++x) {
        if (m_context.GetPixel(x, y) == color) {
          left = (std::min)(left, x);
          top = (std::min)(top, y);
          right = (std::max)(right, x);
          bottom = (std::max)(bottom, y);
          ++count;
        }
      }
    }
    return {left, top, right - left + 1, bottom - top + 1, count};
  }

 private:
  CDC m_context;
  CBitmap m_bitmap;
  CBitmap* m_before = nullptr;
};

class Hosting : public testing::Test {
 protected:
  // A volume of 128 voxels of 1 mm; the dipole is 20 mm left, 11 mm up and 30 mm in front of its middle.
  Hosting() : host(1) {
    host.face->setSpaceXYZ(1.0, 1.0, 1.0);
    host.face->setDipoleLocation(0, 20.0F, 11.0F, 30.0F);
    host.dipole(0).m_size = 5.0;
    host.dipole(0).m_color = RGB(250, 20, 60);
  }

  std::vector<int> drawn() { return picture.drawn(RGB(250, 20, 60)); }

  Messages messages;
  Host host;
  Picture picture;
};

using Box = std::vector<int>;

TEST_F(Hosting, AxialSlicesGetTheGlyph) {
  EXPECT_EQ(host.face->drawDipoleAxial(picture.context(), 64 + 11, 1), 1);
  EXPECT_EQ(drawn(), (Box{64 + 20, 64 - 30, 5, 5, 25}));
}

TEST_F(Hosting, CoronalSlicesGetTheGlyph) {
  EXPECT_EQ(host.face->drawDipoleCoronal(picture.context(), 64 + 30, 1), 1);
  EXPECT_EQ(drawn(), (Box{64 + 20, 64 - 11, 5, 5, 25}));
}

TEST_F(Hosting, SagittalSlicesGetTheGlyph) {
  EXPECT_EQ(host.face->drawDipoleSagittal(picture.context(), 64 + 20, 1), 1);
  EXPECT_EQ(drawn(), (Box{64 + 30, 64 - 11, 5, 5, 25}));
}

TEST_F(Hosting, OtherSlicesGetNothing) {
  host.face->drawDipoleCoronal(picture.context(), 64 + 28, 1);
  host.face->drawDipoleSagittal(picture.context(), 64 - 20, 1);
  host.face->drawDipoleAxial(picture.context(), 64 - 11, 1);
  EXPECT_EQ(drawn()[4], 0);
  EXPECT_EQ(picture.drawn(ground)[4], side * side);
}

TEST_F(Hosting, WindowsAreDrawnIntoAsWell) {
  CClientDC context(&host.window);
  host.face->setDipoleLocation(0, -60.0F, 11.0F, 60.0F);
  host.face->drawDipoleAxial(&context, 64 + 11, 1);
  EXPECT_EQ(context.GetPixel(4, 4), RGB(250, 20, 60));
  EXPECT_EQ(context.GetPixel(8, 8), RGB(250, 20, 60));
  EXPECT_NE(context.GetPixel(9, 9), RGB(250, 20, 60));
}

TEST_F(Hosting, SetsGoIntoTheHostsArchiveAndComeBack) {
  host.addDipoles(2);
  host.dipole(2).m_label = _T("last \u4e2d");
  CMemFile file;
  {
    CArchive archive(&file, CArchive::store);
    EXPECT_EQ(host.face->serializeDipolesFace(archive), 1);
  }
  file.SeekToBegin();
  Host reader;
  reader.openManager();
  CArchive archive(&file, CArchive::load);
  EXPECT_EQ(reader.face->serializeDipolesFace(archive), 1);
  ASSERT_EQ(reader.face->getTotalDipoles(), 3U);
  EXPECT_EQ(toUtf8(reader.dipole(2).m_label), "last \u4e2d");
  EXPECT_EQ(reader.dipole(0).m_location[1], 11.0);
  EXPECT_EQ(reader.dipole(0).m_color, RGB(250, 20, 60));
  reader.face->updateDipoleList();
  EXPECT_EQ(reader.cell(2, 10), "last \u4e2d");
}

TEST_F(Hosting, ExceptionsOfTheModuleAreCaughtByTheHost) {
  CMemFile file;
  {
    CArchive archive(&file, CArchive::store);
    host.face->serializeDipolesFace(archive);
  }
  file.SetLength(40);
  file.SeekToBegin();
  bool caught = false;
  try {
    CArchive archive(&file, CArchive::load);
    CDipoleFacezq& face = *host.face;
    face.serializeDipolesFace(archive);
  } catch (CArchiveException* exception) {
    caught = true;
    EXPECT_EQ(exception->m_cause, CArchiveException::endOfFile);
    exception->Delete();
  }
  EXPECT_TRUE(caught);
}

TEST_F(Hosting, MemoryOfOneSideIsFreedByTheOther) {
  const CString name = host.face->m_managerTitle + _T(", a text of the host behind one of the module");
  host.face->m_managerTitle = name;
  host.face->setDipoleName(0, name);
  host.dipole(0).m_label += _T(", grown by the host");
  CDipoleszq own = host.dipole(0);
  EXPECT_EQ(host.face->addDipolex(&own), 2);
  EXPECT_EQ(toUtf8(host.dipole(1).m_label),
            "Dipole Manager, a text of the host behind one of the module, grown by the host");
}

TEST_F(Hosting, MessagesOfTheModuleAreTheHostsWindows) {
  host.face->cleanDipoles();
  EXPECT_EQ(host.face->getNextDipole(), nullptr);
  EXPECT_EQ(messages.take(), Texts{"No dipole available"});
}

TEST_F(Hosting, TheModulesResourcesAreFoundInItsLibrary) {
  const HMODULE library = ::GetModuleHandleW(L"dipole.dll");
  ASSERT_NE(library, nullptr);
  for (const int dialog : {20000, 20001, 20007, 20042}) {
    EXPECT_EQ(AfxFindResourceHandle(MAKEINTRESOURCE(dialog), RT_DIALOG), library);
  }
}

TEST_F(Hosting, LoadingTheLibraryAgainGivesTheSame) {
  const HMODULE library = ::LoadLibraryW(L"dipole.dll");
  EXPECT_EQ(library, ::GetModuleHandleW(L"dipole.dll"));
  ::FreeLibrary(library);
  host.openManager();
  EXPECT_EQ(host.rows(), 1);
}

}  // namespace
