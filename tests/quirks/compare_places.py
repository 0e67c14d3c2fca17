"""Compares the joints' positions in an import with a walk of the file (format_walk.py)."""

import numpy

from program_runs import Failure


def end_name(name, names):
    """The name of an end site in the import. `names` maps joints to their new names."""
    leaf = name[:-len("_End")]
    return f"{names[leaf]}_End" if isinstance(names.get(leaf), str) else name


def candidates(name, is_end, names):
    """The names that a joint may have in the import; empty if any object at its position will do."""
    if is_end and names.get(name[:-len("_End")], "") is None:
        return []
    if is_end:
        return [end_name(name, names)]
    new = names.get(name, name)
    return new if isinstance(new, list) else [] if new is None else [new]


def taken(name, walk):
    """Whether a bone chain may already have the name: a joint that branches gets further bones with numbers."""
    stem = name.rstrip("0123456789")
    return any(name[:end] in walk.names for end in range(len(stem), len(name)))


def nodes_of(options, found, numbered):
    """Indexes of the objects with one of these names. With `numbered`, a number may follow the name."""
    return [node for node, other in enumerate(found)
            if other in options or numbered and any(other.startswith(option) and other[len(option):].isdigit()
                                                    for option in options)]


def split_models(arrays, count):
    """Returns (names, positions) for each model of an import."""
    names, positions = [str(name) for name in arrays["names"]], arrays["positions"]
    if count == 1:
        return [(names, positions)]
    models = list(dict.fromkeys(name.split(".", 1)[0] for name in names))
    if len(models) != count:
        raise Failure(f"{len(models)} models where {count} were expected")
    return [([name.split(".", 1)[1] for name in names if name.startswith(model + ".")],
             positions[:, [name.startswith(model + ".") for name in names]]) for model in models]


def rows_of(numbers, frames, several):
    """Indexes of the import's rows for a walk's frames. If there are several models, one may be shorter than the
    import; it then keeps its last pose."""
    if len(numbers) == frames or several and len(numbers) < frames:
        return numpy.arange(len(numbers))
    if len(numbers) and numbers[-1] - numbers[0] + 1 == frames:  # the import fills gaps
        return numbers - numbers[0]
    raise Failure(f"{frames} frames where {len(numbers)} were expected")


def expected_places(walk, frames):
    """Returns the (positions, frame numbers) that an import must have. `frames` are rows of the walk, from 1, or None
    for all."""
    if frames is None and len(walk.positions):
        return walk.positions, walk.frame_numbers
    if not frames:
        return walk.rest[None], numpy.array([1])
    return walk.positions[[frame - 1 for frame in frames]], numpy.arange(1, len(frames) + 1)


def compare(arrays, walks, bound, names=None, frames=None, bones=False, numbered=True):
    """Yields a message for each joint that is not at its position, within `bound` times the figure's size."""
    names = names or {}
    for walk, (found, places) in zip(walks, split_models(arrays, len(walks))):
        expected, numbers = expected_places(walk, frames)
        if not numbered:
            numbers = numpy.arange(1, len(numbers) + 1)
        shown = places[rows_of(numbers, len(places), len(walks) > 1)]
        size = walk.size()
        unsure = {name for name in walk.names if walk.names.count(name) > 1}
        for joint, name in enumerate(walk.names):
            errors = numpy.abs(shown - expected[:, joint:joint + 1]).max(axis=2) / size  # frames, nodes
            options = candidates(name, walk.is_end[joint], names)
            allowed = nodes_of(options, found, bones and taken(name, walk))
            if options and not allowed and not bones and name not in unsure:
                yield f"no joint is named {name!r}; there are {found}"
                continue
            if not allowed or name in unsure:
                allowed = list(range(len(found)))
            worst = errors[:, allowed].max(axis=0)
            best = int(worst.argmin())
            if not worst[best] <= bound:
                frame = int(errors[:, allowed[best]].argmax())
                yield (f"{name}: {worst[best]:.2e} of the figure's size away, at most {bound:.0e} is right "
                       f"(frame {frame + 1}: {shown[frame, allowed[best]]}, not {expected[frame, joint]})")


def compare_end(record, joint, offset, size):
    """With bones, the bone of the joint must reach to the added end site, which no output shows as a joint."""
    lengths = [item["length"] for item in record["scene"]
               if item["type"] == "ChainBone" and item["name"].rstrip("0123456789") == joint]
    wanted = numpy.linalg.norm(offset)
    if not any(abs(length - wanted) <= 1e-9 * size for length in lengths):
        yield f"{joint}: no end site {numpy.linalg.norm(offset):.4f} away from it"


def jumps(record, joints):
    """Yields a message for each angle of these joints that changes by more than 180 degrees from frame to frame."""
    curves = {}
    for entry in record["scene"]:
        for action in entry.get("actions", []):
            for item in action["items"]:
                if "values" in item:
                    curves[item["target"]] = item["values"]
    for joint in joints:
        for letter in "xyz":
            values = curves.get(f"{joint}.kine.local.rot{letter}", [])
            steps = numpy.abs(numpy.diff(numpy.array(values, dtype=float)))
            if len(steps) and steps.max() > 180.0 + 1e-6:
                yield f"{joint}: rot{letter} jumps by {steps.max():.1f} degrees after frame {int(steps.argmax()) + 1}"
