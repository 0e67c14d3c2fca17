"""run_page.py ZKHOST PAGE SAMPLE.bvh: imports the sample as the page says, and runs the page's Python code in a folder with
the outputs. All code of the page is one program, as it is for a reader who goes from top to bottom."""

import os
import re
import subprocess
import sys
import tempfile


def main():
    zkhost, page, sample = (os.path.abspath(path) for path in sys.argv[1:])
    with open(page, encoding="utf-8") as file:
        blocks = re.findall(r"```python\n(.*?)```", file.read(), re.DOTALL)
    if not blocks:
        sys.exit(f"{page} has no Python code")
    with tempfile.TemporaryDirectory() as folder:
        os.chdir(folder)
        name = os.path.splitext(os.path.basename(sample))[0]
        subprocess.run([zkhost, "import", sample, "--quiet", "-o", name + ".npz", "-o", name + ".csv"], check=True)
        names = {}
        for number, block in enumerate(blocks, 1):
            print(f"block {number} of {len(blocks)}")
            exec(compile(block, f"{os.path.basename(page)}, block {number}", "exec"), names)


main()
