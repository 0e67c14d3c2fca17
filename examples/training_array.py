"""From a folder of takes to an array for training, and from an array back to a BVH: training_array.py FOLDER OUT.npy OUT.bvh"""
import sys

import numpy as np
import zkmocaputils as zm

FPS, LENGTH = 30, 60  # windows of two seconds
folder, array, bvh = sys.argv[1:]

windows, skeleton = [], None
for take in zm.read_many(zm.find(folder), on_error="skip", warn=False):
    skeleton = skeleton or take
    if take.names != skeleton.names:
        continue  # another skeleton
    take = take.resample(FPS)
    rotations = zm.to_6d(take.local_quaternions)  # (frames, joints, 6); or take.local_quaternions, or take.euler("ZXY")
    places = take.local_positions[:, :1] * (take.unit or 1.0)  # of the root, in metres
    row = np.concatenate([rotations.reshape(len(take), -1), places.reshape(len(take), -1)], axis=1)
    windows += [row[start:start + LENGTH] for start in range(0, len(row) - LENGTH + 1, LENGTH // 2)]
np.save(array, np.stack(windows).astype(np.float32))  # (windows, LENGTH, 6 * joints + 3)

made = np.load(array)[0].astype(np.float64)  # what a model would make
rotations, places = made[:, :-3].reshape(LENGTH, -1, 6), made[:, -3:] / (skeleton.unit or 1.0)
take = zm.Take.from_arrays(skeleton.names, skeleton.parents, skeleton.offsets, zm.from_6d(rotations), root_positions=places,
                           fps=FPS, unit=skeleton.unit or None, is_end=skeleton.is_end)
take.write(bvh)
