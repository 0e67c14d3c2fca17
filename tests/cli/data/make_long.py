"""Prints a BVH file. The argument is its number of frames."""
import sys

print("HIERARCHY ROOT Hips { OFFSET 0 0 0 CHANNELS 6 Xposition Yposition Zposition Zrotation"
      " Xrotation Yrotation End Site { OFFSET 0 1 0 } }")
print(f"MOTION Frames: {sys.argv[1]} Frame Time: 0.01")
sys.stdout.write("0.25 90.5 -1.125 10.5 20.25 30.125\n" * int(sys.argv[1]))
