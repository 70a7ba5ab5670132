"""`dipole sort` gives exactly the order of a selection sort that keeps its minimum in single precision."""

import csv
import io
import json
import math
import random
import unittest

import dipset
from support import ToolTest, example, single

KEYS = {"number": lambda d: d["number"], "latency": lambda d: d["latency"], "x": lambda d: d["location"][0],
        "y": lambda d: d["location"][1], "z": lambda d: d["location"][2], "ox": lambda d: d["orientation"][0],
        "oy": lambda d: d["orientation"][1], "oz": lambda d: d["orientation"][2],
        "error": lambda d: d["fit_error"], "moment": lambda d: d["moment"]}


def selection_sorted(dipoles, key):
    """The smallest of the rest is exchanged with the first of the rest; the minimum so far is remembered in
    single precision, what is below it is smaller. Whole numbers are compared as they are."""
    result = list(dipoles)
    slots = [slot for slot, dipole in enumerate(result) if dipole is not None]
    for place, slot in enumerate(slots):
        chosen, minimum = slot, key(result[slot])
        minimum = minimum if isinstance(minimum, int) else single(minimum)
        for other in slots[place + 1:]:
            value = key(result[other])
            if value < minimum:
                chosen, minimum = other, value if isinstance(value, int) else single(value)
        result[slot], result[chosen] = result[chosen], result[slot]
    return result


def random_value(chance):
    """Rich in ties, in values that single precision does not tell apart, and in odd ones."""
    return chance.choice([float(chance.randint(-3, 3)), 1 + chance.randint(0, 5) * 2.0 ** -40,
                          chance.uniform(-100, 100), -0.0, 1e30, 1e-30, math.inf, -math.inf])


def random_dipoles(chance, count):
    return [{"number": chance.randint(-5, 5), "id": place, "label": "d%d" % place,
             "latency": random_value(chance), "moment": random_value(chance),
             "fit_error": random_value(chance),
             "location": [random_value(chance) for _ in range(3)],
             "orientation": [random_value(chance) for _ in range(3)]} for place in range(count)]


class Sort(ToolTest):
    def sorted_by(self, key, source):
        self.succeed("sort", "--by", key, source, "--force", "-o", self.path("o.dipset"))
        with open(self.path("o.dipset"), "rb") as file:
            return dipset.unpack_set(file.read())

    def test_every_key_gives_the_order_of_the_selection_sort(self):
        chance = random.Random(7)
        for turn in range(8):
            source = self.write("in.dipset", dipset.pack_set(random_dipoles(chance, 60), current=turn))
            with open(source, "rb") as file:
                before = dipset.unpack_set(file.read())
            for name, key in KEYS.items():
                current, dipoles, face = self.sorted_by(name, source)
                wanted = selection_sorted(before[1], key)
                self.assertEqual([d["id"] for d in dipoles], [d["id"] for d in wanted], (turn, name))
                self.assertEqual(dipoles, wanted)
                self.assertEqual((current, face), (before[0], before[2]))

    def test_the_order_is_not_that_of_exact_values_where_single_precision_is_too_coarse(self):
        near = [1 + 3 * 2.0 ** -40, 1 + 2.0 ** -40, 1 + 2 * 2.0 ** -40]
        source = self.write("in.dipset", dipset.pack_set([{"latency": value} for value in near]))
        found = [dipole["latency"] for dipole in self.sorted_by("latency", source)[1]]
        self.assertEqual(found, near)

    def test_empty_slots_stay(self):
        dipoles = [{"latency": 3.0}, None, {"latency": 1.0}, None, {"latency": 2.0}]
        source = self.write("in.dipset", dipset.pack_set(dipoles))
        found = [dipole and dipole["latency"] for dipole in self.sorted_by("latency", source)[1]]
        self.assertEqual(found, [1.0, None, 2.0, None, 3.0])

    def test_an_example_to_a_table(self):
        self.succeed("sort", "--by", "error", example("spikes.dip"), "-o", self.path("o.csv"))
        with open(self.path("o.csv"), encoding="utf-8", newline="") as file:
            rows = list(csv.DictReader(io.StringIO(file.read())))
        errors = [float(row["fit_error_percent"]) for row in rows]
        self.assertEqual(errors, sorted(errors))
        self.assertEqual(len(set(row["number"] for row in rows)), 120)

    def test_a_set_in_place(self):
        source = self.write("s.dipset", dipset.pack_set([{"moment": 2.0}, {"moment": 1.0}]))
        self.succeed("sort", "--by", "moment", source, "--force", "-o", source)
        with open(source, "rb") as file:
            self.assertEqual([d["moment"] for d in dipset.unpack_set(file.read())[1]], [1.0, 2.0])

    def order(self, source, *arguments):
        result = self.succeed("sort", *arguments, source, "--to", "json", "-o", "-")
        return [dipole["id"] for dipole in json.loads(result.out)["dipoles"]]

    def test_descending_is_the_reverse(self):
        source = self.write("in.dipset", dipset.pack_set([{"id": i, "moment": m} for i, m in
                                                          enumerate((2.0, 5.0, -1.0, 3.0))]))
        self.assertEqual(self.order(source, "--by", "moment"), [2, 0, 3, 1])
        self.assertEqual(self.order(source, "--by", "moment", "--descending"), [1, 3, 0, 2])

    def test_what_is_no_number_comes_last_in_both_orders(self):
        nan = math.nan
        source = self.write("in.dipset", dipset.pack_set([{"id": i, "latency": m} for i, m in
                                                          enumerate((nan, 5.0, -math.inf, nan, 3.0))]))
        self.assertEqual(self.order(source, "--by", "latency"), [2, 4, 1, 0, 3])
        self.assertEqual(self.order(source, "--by", "latency", "--descending"), [1, 4, 2, 0, 3])

    def test_what_is_unknown_comes_last_in_both_orders(self):
        names = ("number", "id", "label", "x_left_mm", "y_up_mm", "z_front_mm", "latency_ms")
        rows = ["%d,%d,l%d,1,2,3,%s" % (i, i, i, latency) for i, latency in enumerate(("", "7", "", "-5"), 1)]
        self.write("t.csv", "\n".join([",".join(names), *rows]) + "\n")
        source = self.path("t.csv")
        self.assertEqual(self.order(source, "--by", "latency"), [4, 2, 3, 1])
        self.assertEqual(self.order(source, "--by", "latency", "--descending"), [2, 4, 3, 1])

    def test_labels_sort_by_characters_and_the_numbers_in_them_by_size(self):
        labels = ["spike_10", "", "spike_2", "A", "spike_2b", "spike_", "spike_02", "b", "Ä"]
        source = self.write("in.dipset", dipset.pack_set([{"id": i, "label": l} for i, l in enumerate(labels)]))
        def sorted_labels(*more):
            return [labels[i] for i in self.order(source, "--by", "label", *more)]
        rising = ["A", "b", "spike_", "spike_2", "spike_02", "spike_2b", "spike_10", "Ä"]
        self.assertEqual(sorted_labels(), [*rising, ""])
        self.assertEqual(sorted_labels("--descending"), [*reversed(rising), ""])

    def test_wrong_keys_end_with_2(self):
        for arguments in (["--by", "colour"], ["--by", "1"], ["--by", ""], []):
            self.end_with(2, "sort", *arguments, example("spikes.dip"), "-o", self.path("o.csv"))


if __name__ == "__main__":
    unittest.main()
