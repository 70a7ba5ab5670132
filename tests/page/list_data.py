"""Pages whose list has something to tell: values that are unknown or no numbers, orientations, clusters."""

import numpy

import page_data

DIRECTIONS = ["orientation_x_left", "orientation_y_up", "orientation_z_front"]
TO_HOST = numpy.array([[-1.0, 0, 0], [0, 0, 1], [0, 1, 0]])  # of page_data's frame "host"


def random_data(count, seed=1, **changes):
    """Two dense groups and others all around; places in world mm, orientations in the head frame."""
    random = numpy.random.default_rng(seed)
    places = random.normal((0, 10, 30), 30, (count, 3))
    clusters = numpy.arange(count) % 4  # 1 and 2 are groups; 3 and 0 are none
    for number, centre in ((1, (-40, 20, 50)), (2, (35, -30, 20))):
        places[clusters == number] = centre + random.normal(0, 3, ((clusters == number).sum(), 3))
    clusters[clusters == 3] = 0
    places = numpy.round(places, 2)
    directions = random.normal((0.6, 0.1, 0.2), 0.5, (count, 3))
    directions = numpy.round(directions / numpy.linalg.norm(directions, axis=1)[:, None], 6)
    data = page_data.page_data(places.tolist(), arrows=(8 * directions @ TO_HOST).tolist())
    columns = data["dipoles"]["columns"]
    for column, values in ((2, random.uniform(-50, 450, count)), (3, abs(random.normal(8, 5, count))),
                           (4, random.normal(60, 30, count))):
        columns[column]["values"] = numpy.round(values, 3).tolist()
    for axis, title in enumerate(DIRECTIONS):
        columns.append(page_data.column(title, title, "", "number", directions[:, axis].tolist()))
    data["dipoles"]["clusters"] = clusters.tolist()
    data["clusters"] = clusters_of(places, directions, clusters)
    data.update(changes)
    return data


def clusters_of(places, directions, numbers):
    found = []
    for number in (1, 2):
        own = places[numbers == number]
        if len(own) < 6:
            continue
        centroid = own.mean(axis=0)
        away = numpy.linalg.norm(own - centroid, axis=1)
        mean, cone = cone_of(directions[numbers == number])
        found.append({"count": len(own), "centroid": centroid.tolist(), "rms": float(numpy.sqrt((away ** 2).mean())),
                      "farthest": float(away.max()), "direction": (TO_HOST.T @ mean).tolist(), "cone": cone,
                      "places": [{"frame": "host", "place": (TO_HOST @ centroid).tolist()},
                                 {"frame": "scanner", "place": centroid.tolist()}],
                      "label": None, "latency": [-50, 450], "fitError": [0, 20]})
    return {"text": "6 or more within 10 mm", "scattered": int((numbers == 0).sum()),
            "removed": [{"limit": "fit error", "count": 0}], "clusters": found}


def cone_of(directions):
    """Mean orientation, and the degrees from it within which 95 percent lie."""
    mean = directions.mean(axis=0)
    mean = mean / numpy.linalg.norm(mean)
    unit = directions / numpy.linalg.norm(directions, axis=1)[:, None]
    angles = numpy.sort(numpy.degrees(numpy.arccos(numpy.clip(unit @ mean, -1, 1))))
    return mean, float(angles[int(numpy.ceil(0.95 * len(angles))) - 1])


def values(data, title):
    found, = [column["values"] for column in data["dipoles"]["columns"] if column["title"] == title]
    return found


HOSTILE = [
    "<script>document.title = 'taken'</script>",
    "</script><img src=x onerror=\"document.title = 'taken'\">",
    "&lt;b&gt; &amp; \"quotes\" 'and' `more`",
    "one\u2028two\u2029three",
    "\u202eturned around \u05d0\u05d1 12",
    "x" * 70000,
    "=1+1", "+1", "-1", "@SUM(A1)", "'quoted", "\ttab", "\rreturn",
    "comma, \"quote\"\nline",
    "",
    "\U0001f600" * 100,
    "javascript:alert(1)",
    "{{script}} ${1 + 1}",
]


def hostile_data():
    count = len(HOSTILE) + 1
    data = random_data(count, title=HOSTILE[0], patient=HOSTILE[1])
    data["dipoles"]["columns"][1]["values"] = [*HOSTILE, None]
    data["files"][0]["name"] = HOSTILE[4]
    data["head"]["name"] = HOSTILE[0]
    data["warnings"] = [HOSTILE[1]]
    data["repaired"] = [HOSTILE[5]]
    data["findings"] = [{"severity": severity, "code": "row-order", "file": HOSTILE[4], "line": 3,
                         "sentence": HOSTILE[0], "remedy": HOSTILE[1], "rows": [0]}
                        for severity in ("wrong", "doubtful", "note")]
    return data
