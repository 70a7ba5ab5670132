"""Files that deviate from what the import takes for granted, for the tests of the audit."""

from support import SPHERE

HEADING = "// xp (cm) yp (cm) zp (cm) xo yo zo Mom(nAm) Label\n"
FIT_HEADING = "// Trial Start Latency (s) N_Pts Error MEG_Error EEG_Error ErrType FitType Good Dataset\n"
MOVING_HEADING = ("// Trial Sample Latency (s) xp (cm) yp (cm) zp (cm) xo yo zo Mom(nAm) Err(%) Label\n")
MSI_HEADING = "Latency  x  y  z  Qx  Qy  Qz  Q  Rad  Corr  GOF  Vol  Grp  A  B  C  D  Label\n"
MSI_ROW = "20.0 1.5 5.0 6.0 9.0 2.0 -1.0 22.0 4.5 0.97 0.75 0.4 1 a b c 1 N20m\n"
FIDUCIALS = "\tNASION:\t%s\n\tLEFT_EAR:\t28\t150\t165\n\tRIGHT_EAR:\t228\t150\t165\n"


def section(name, heading, rows):
    return name + "\n{\n" + heading + "".join(row + "\n" for row in rows) + "}\n"


def fit_row(number, latency, error):
    return "%d: %d 1 %s 1 %s 5 0 0 0 1 a.ds" % (number, number, latency, error)


def dipoles(rows, heading=HEADING, fits=None, head=SPHERE):
    """A file with one section of static dipoles; each has a fit of 100 ms and 5 % unless told otherwise."""
    if fits is None:
        fits = [fit_row(number, "0.1", 5) for number in range(1, len(rows) + 1)]
    text = head + section("Dipoles", heading, rows)
    return text + (section("Dipole_FitInfo", FIT_HEADING, fits) if fits else "")
