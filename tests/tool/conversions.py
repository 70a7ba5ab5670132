"""What the tests of conversions share."""

import csv
import io

import dipset
from support import ToolTest, with_output

COLUMNS = ("number id fit_tag label x_left_mm y_up_mm z_front_mm orientation_x_left orientation_y_up "
           "orientation_z_front moment latency_ms fit_error_percent color color_3d_red color_3d_green "
           "color_3d_blue shown_in_3d orientation_shown_in_3d display shown_on_slices selected "
           "glyph_size_pixels").split()


def guarded(label):
    """As a table for spreadsheets has it."""
    return "'" + label if label[:1] in tuple("=+-@'\t\r") else label


class ConvertTest(ToolTest):
    def convert(self, *arguments, code=0):
        return self.end_with(code, "convert", *with_output(arguments))

    def read(self, path):
        with open(path, "rb") as file:
            return file.read()

    def table(self, path, separator=","):
        csv.field_size_limit(1000000)
        text = self.read(path).decode("utf-8")
        return list(csv.DictReader(io.StringIO(text, newline=""), delimiter=separator, strict=True))

    def set_of(self, dipoles, name="in.dipset", **face):
        return self.write(name, dipset.pack_set(dipoles, **face))
