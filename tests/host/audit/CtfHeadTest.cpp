// Header, head sphere, fiducial points and encoding of a CTF file.
#include "host/text/PathText.h"
#include "tests/host/audit/Audited.h"

using host::FindingCode;
using host::Severity;

namespace {

const std::string dipoles = ctfSection("Dipoles", ctfHeading, {"1:\t1\t5\t6\t0\t0\t1\t20\ta"}) + ctfFit +
                            "1: 1 1 0.1 1 5 5 0 0 0 1 a\n}\n";

std::string fiducials(const std::string& name, const std::string& nasion) {
  return ctfSection(name, "\t// Fid. Points\tSag\tCor\tAxi\n",
                    {"\tNASION:\t" + nasion, "\tLEFT_EAR:\t28\t150\t165", "\tRIGHT_EAR:\t228\t150\t165"});
}

Place3 pointOf(const CFiducialzq& points, int point) {
  Place3 place{};
  points.m_points[point].getPosition(place[0], place[1], place[2]);
  return place;
}

}  // namespace

TEST(CtfFiducials, VoxelsWithFractionsAreNotReadAndTakenFromTheFile) {
  Audited a("a.dip", ctfSphere + fiducials("Fid_Points", "128.5\t26.25\t156") + dipoles);
  EXPECT_EQ(a.set->m_fiducialMri.getTotalFiduciaryPts(true), 2);
  EXPECT_EQ(pointOf(a.set->m_fiducialCtf, CFiducial::nasion), (Place3{0, 0, 85}));  // the sphere's radius
  const host::Finding finding = a.only(FindingCode::fiducials);
  EXPECT_EQ(finding.severity, Severity::doubtful);
  EXPECT_EQ(finding.section, "Fid_Points");
  EXPECT_EQ(finding.line, 8);
  EXPECT_EQ(a.outline(), Lines{"doubtful fiducials"});
  const host::RepairReport report = a.repair({FindingCode::fiducials});
  EXPECT_EQ(report.told, Lines{"The fiducial points were taken as the file gives them."});
  EXPECT_EQ(outlineOf(report.left.findings), Lines());
  EXPECT_EQ(pointOf(a.set->m_fiducialMri, CFiducial::nasion), (Place3{127.5, 100, 229.75}));
  // Relative to the ears' midpoint (128, 91, 106), voxels of 0.859375 mm: -0.5, 9 and 123.75 of them.
  EXPECT_EQ(pointOf(a.set->m_fiducialCtf, CFiducial::nasion), (Place3{-0.4296875, 7.734375, 106.34765625}));
  EXPECT_EQ(a.repair(host::allFindingCodes()).told, Lines());
}

TEST(CtfFiducials, ASectionOfAnotherNameIsNotReadAndTakenFromTheFile) {
  Audited a("a.dip", ctfSphere + fiducials("MRI_Fid_Points", "128\t26\t156") + dipoles);
  EXPECT_EQ(a.set->m_fiducialMri.getTotalFiduciaryPts(true), 0);
  EXPECT_EQ(a.outline(), Lines{"doubtful fiducials"});
  EXPECT_EQ(outlineOf(a.repair({FindingCode::fiducials}).left.findings), Lines());
  EXPECT_EQ(pointOf(a.set->m_fiducialMri, CFiducial::leftEar), (Place3{228, 91, 106}));
  EXPECT_EQ(pointOf(a.set->m_fiducialCtf, CFiducial::leftEar), (Place3{85.9375, 0, 0}));
}

TEST(CtfFiducials, PointsThatAreMissingHaveNoRemedyAndWithoutASphereNoMessageIsShown) {
  const Audited a("a.dip", ctfSphere + ctfSection("Fid_Points", {}, {"NASION: 128 26 156"}) + dipoles);
  EXPECT_EQ(a.outline(), Lines{"doubtful fiducials"});
  EXPECT_TRUE(a.only(FindingCode::fiducials).remedy.empty());

  Audited b("a.dip", fiducials("MRI_Fid_Points", "128\t26\t156") + dipoles);
  const std::size_t said = b.user.messages.size();
  EXPECT_EQ(outlineOf(b.repair({FindingCode::fiducials}).left.findings), Lines());
  EXPECT_EQ(b.user.messages.size(), said);
  EXPECT_EQ(b.set->m_fiducialMri.getTotalFiduciaryPts(true), 3);
  EXPECT_EQ(b.set->m_fiducialCtf.getTotalFiduciaryPts(true), 0);
}

TEST(CtfFiducials, TwoSetsOfPointsMustAgree) {
  const std::string own = fiducials("Fid_Points", "128\t26\t156");
  EXPECT_EQ(
      Audited("a.dip", ctfSphere + own + fiducials("MRI_Fid_Points", "128\t26\t156") + dipoles).outline(),
      Lines());
  EXPECT_EQ(
      Audited("a.dip", ctfSphere + own + fiducials("MRI_Fid_Points", "128\t30\t156") + dipoles).outline(),
      Lines{"doubtful fiducials"});
}

TEST(CtfSphere, AValueThatTouchesItsKeyIsNotReadAndTakenFromTheFile) {
  std::string text = ctfSphere;
  text.replace(text.find("Z:\t5.0"), 6, "Z:5.0");
  Audited a("a.dip", text + dipoles);
  EXPECT_EQ(a.set->m_sphereCtf.m_center[1], 0.0);
  EXPECT_EQ(a.outline(), Lines{"wrong sphere"});
  EXPECT_EQ(outlineOf(a.repair({FindingCode::sphere}).left.findings), Lines());
  EXPECT_EQ(a.set->m_sphereCtf.m_center[0], 1.0);  // the file's y, to the left
  EXPECT_EQ(a.set->m_sphereCtf.m_center[1], 50.0);
  EXPECT_EQ(a.set->m_sphereCtf.m_center[2], 5.0);
  EXPECT_EQ(a.set->m_sphereCtf.m_radius, 85.0);
  EXPECT_EQ(a.set->m_sphereLocational.m_radius, 85.0);
  EXPECT_EQ(a.set->m_sphereLocational.m_center[1], 0.0);
}

TEST(CtfSphere, AMissingValueAndARadiusThatNoHeadHasAreDoubtful) {
  std::string text = ctfSphere;
  text.erase(text.find("\tORIGIN_Y"), text.find("\tORIGIN_Z") - text.find("\tORIGIN_Y"));
  EXPECT_EQ(Audited("a.dip", text + dipoles).outline(), Lines{"doubtful sphere"});
  text = ctfSphere;
  text.replace(text.find("8.5"), 3, "85.");
  EXPECT_EQ(Audited("a.dip", text + dipoles).outline(), Lines{"doubtful sphere"});
}

TEST(CtfSphere, ASecondOneThatIsAnotherIsWrongWithoutARemedy) {
  std::string second = ctfSphere;
  second.replace(second.find("8.5"), 3, "7.0");
  Audited a("a.dip", ctfSphere + second + dipoles);
  EXPECT_EQ(a.set->m_sphereCtf.m_radius, 85.0);  // of the first
  EXPECT_EQ(a.outline(), Lines{"wrong sections"});
  const host::Finding finding = a.only(FindingCode::sections);
  EXPECT_EQ(finding.section, "MEG_Sphere");
  EXPECT_EQ(finding.line, 8);
  EXPECT_EQ(finding.sentence,
            "The file gives the head sphere more than once, and differently; which is right is open.");
  EXPECT_TRUE(finding.remedy.empty());
  const host::RepairReport report = a.repair(host::allFindingCodes());
  EXPECT_EQ(report.told, Lines());
  EXPECT_EQ(outlineOf(report.left.findings), Lines{"wrong sections"});
  EXPECT_EQ(a.set->m_sphereCtf.m_radius, 85.0);
  EXPECT_EQ(Audited("a.dip", ctfSphere + ctfSphere + dipoles).outline(), Lines());
}

TEST(CtfFiducials, ASecondSectionWithOtherPointsIsWrongWithoutARemedy) {
  const std::string first = fiducials("Fid_Points", "128\t26\t156");
  Audited a("a.dip", ctfSphere + first + fiducials("Fid_Points", "100\t26\t156") + dipoles);
  EXPECT_EQ(pointOf(a.set->m_fiducialMri, CFiducial::nasion), (Place3{156, 100, 230}));  // of the last
  EXPECT_EQ(a.outline(), Lines{"wrong sections"});
  const host::Finding finding = a.only(FindingCode::sections);
  EXPECT_EQ(finding.section, "Fid_Points");
  EXPECT_EQ(finding.line, 8);
  EXPECT_EQ(finding.sentence,
            "The file gives the fiducial points more than once, and differently; which is right is open.");
  EXPECT_TRUE(finding.remedy.empty());
  const host::RepairReport report = a.repair(host::allFindingCodes());
  EXPECT_EQ(report.told, Lines());
  EXPECT_EQ(outlineOf(report.left.findings), Lines{"wrong sections"});
  EXPECT_EQ(pointOf(a.set->m_fiducialMri, CFiducial::nasion), (Place3{156, 100, 230}));
  EXPECT_EQ(Audited("a.dip", ctfSphere + first + first + dipoles).outline(), Lines());
  EXPECT_EQ(Audited("a.dip", ctfSphere + fiducials("MRI_Fid_Points", "128\t26\t156") +
                                 fiducials("MRI_Fid_Points", "100\t26\t156") + dipoles)
                .outline(),
            (Lines{"doubtful fiducials", "wrong sections"}));
}

TEST(CtfPatient, TwoNamesInOneFileAreDoubtful) {
  const std::string first = "File_Info\n{\n\tPATIENT:\tAnna\n}\n";
  const std::string second = "File_Info\n{\n\tPATIENT:\tBerta\n}\n";
  EXPECT_EQ(Audited("a.dip", first + ctfSphere + first + dipoles).outline(), Lines());
  const Audited a("a.dip", first + ctfSphere + second + dipoles);
  EXPECT_TRUE(host::utf8Of(a.set->m_patient).ends_with("Berta"));  // the last one stays
  EXPECT_EQ(a.outline(), Lines{"doubtful several-patients"});
  EXPECT_TRUE(a.only(FindingCode::severalPatients).remedy.empty());
  EXPECT_EQ(a.only(FindingCode::severalPatients).line, 14);
}

TEST(CtfEncoding, Utf8IsANoteAndDecoded) {
  Audited a("a.dip", "File_Info\n{\nPATIENT: J\xC3\xB6rg\n}\n" + ctfSphere +
                         ctfSection("Dipoles", ctfHeading, {"1:\t1\t5\t6\t0\t0\t1\t20\tm\xC3\xBC"}) + ctfFit +
                         "1: 1 1 0.1 1 5 5 0 0 0 1 a\n}\n");
  EXPECT_EQ(host::utf8Of(a.set->m_patient), " J\xC3\x83\xC2\xB6rg");  // two letters for one
  EXPECT_EQ(a.label(0), "m\xC3\x83\xC2\xBC");
  EXPECT_EQ(a.outline(), (Lines{"note encoding", "note encoding"}));
  const host::RepairReport report = a.repair({FindingCode::encoding});
  EXPECT_EQ(report.told, (Lines{"1 dipole: the label was decoded as UTF-8.", "The patient was decoded."}));
  EXPECT_EQ(outlineOf(report.left.findings), Lines());
  EXPECT_EQ(host::utf8Of(a.set->m_patient), " J\xC3\xB6rg");
  EXPECT_EQ(a.label(0), "m\xC3\xBC");
}

TEST(CtfEncoding, AnsiTextIsClean) {
  EXPECT_EQ(Audited("a.dip", "File_Info\n{\nPATIENT: J\xF6rg\n}\n" + ctfSphere + dipoles).outline(), Lines());
}

TEST(CtfEncoding, AByteOrderMarkThatHidesTheHeaderIsWrongAndDecoded) {
  Audited a("a.dip",
            "\xEF\xBB\xBF"
            "File_Info\n{\nVERSION: 5\nPATIENT: J\xC3\xB6rg\n}\n" +
                ctfSphere + dipoles);
  EXPECT_EQ(host::utf8Of(a.set->m_patient), "non");
  EXPECT_EQ(a.outline(), Lines{"wrong encoding"});
  EXPECT_EQ(outlineOf(a.repair({FindingCode::encoding}).left.findings), Lines());
  EXPECT_EQ(host::utf8Of(a.set->m_patient), " J\xC3\xB6rg");
  EXPECT_EQ(host::utf8Of(a.set->m_fileVersion), " 5");
}

TEST(CtfEncoding, AByteOrderMarkBeforeACommentIsClean) {
  EXPECT_EQ(Audited("a.dip", "\xEF\xBB\xBF// made by\n" + ctfSphere + dipoles).outline(), Lines());
}

TEST(CtfEncoding, AByteOrderMarkThatHidesTheDipolesIsWrongAndTheyCome) {
  Audited a("a.dip", "\xEF\xBB\xBF" + dipoles + ctfSphere);
  EXPECT_EQ(a.set->m_totalDipoles, 0);
  EXPECT_EQ(a.outline(), Lines{"wrong encoding"});
  const host::RepairReport report = a.repair({FindingCode::encoding, FindingCode::rowOrder});
  EXPECT_EQ(outlineOf(report.left.findings), Lines());
  ASSERT_EQ(a.set->m_totalDipoles, 1);
  EXPECT_EQ(a.place(0), (Place3{50, 60, 10}));
  EXPECT_EQ(a.label(0), "a");
  EXPECT_EQ(a.dipole(0).m_moment, 20);
  EXPECT_EQ(a.dipole(0).m_number, 1);
  EXPECT_EQ(a.dipole(0).m_fitError, 5);
  EXPECT_EQ(a.dipole(0).m_rawLocation.m_radius, 1.0);
  EXPECT_EQ(a.set->m_importEnd, 1);
  EXPECT_EQ(a.set->m_momentInNAm, 1);
}

TEST(CtfEncoding, Utf16IsWrongAndDecoded) {
  const std::string text =
      "File_Info\n{\nPATIENT: Anna\n}\n" + ctfSphere + fiducials("Fid_Points", "128 26 156") + dipoles;
  std::string wide = "\xFF\xFE";
  for (const char c : text) {
    wide += c;
    wide += '\0';
  }
  Audited a("a.dip", wide);
  EXPECT_EQ(a.set->m_totalDipoles, 0);
  EXPECT_EQ(a.outline(), Lines{"wrong encoding"});
  EXPECT_EQ(outlineOf(a.repair(host::allFindingCodes()).left.findings), Lines());
  ASSERT_EQ(a.set->m_totalDipoles, 1);
  EXPECT_EQ(a.place(0), (Place3{50, 60, 10}));
  EXPECT_EQ(host::utf8Of(a.set->m_patient), " Anna");
  EXPECT_EQ(a.set->m_sphereCtf.m_radius, 85.0);
  EXPECT_EQ(pointOf(a.set->m_fiducialCtf, CFiducial::leftEar), (Place3{85.9375, 0, 0}));
}
