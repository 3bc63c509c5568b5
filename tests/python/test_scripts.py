"""Whole scripts in Python processes of their own: a glTF opened, edited with NumPy and
saved, then read back; and the README's example, on a folder and over many files with GNU
parallel."""
import pathlib
import re
import subprocess
import sys

import numpy as np

import vorel
from conftest import make_skinned_file

README = pathlib.Path(__file__).resolve().parents[2] / 'README.md'

MOVE_FIRST_INFLUENCE = '''
import sys

import vorel

vorel.open(sys.argv[1])
cluster = vorel.skin_clusters()[0]
weights = vorel.weights(cluster)
weights[:, 1] += weights[:, 0]
weights[:, 0] = 0.0
vorel.set_weights(cluster, weights, normalize=False)
vorel.save(sys.argv[2])
'''


def readme_block(marker):
    """The fenced block that follows the line <!-- marker --> of the README."""
    pattern = r'<!-- ' + re.escape(marker) + r' -->\n```\w*\n(.*?)```'
    found = re.search(pattern, README.read_text(), re.S)
    assert found, f'README.md has no block after <!-- {marker} -->'
    return found.group(1)


def run_python(script, *arguments, cwd):
    """Run a script file with this Python; fails the test with its output when it fails."""
    done = subprocess.run([sys.executable, str(script), *map(str, arguments)], cwd=cwd,
                          capture_output=True, text=True, check=False)
    assert done.returncode == 0, done.stdout + done.stderr
    return done.stdout


def file_weights(path):
    """The weights of the one skin cluster of a scene file."""
    vorel.open(str(path), force=True)
    (cluster,) = vorel.skin_clusters()
    return vorel.weights(cluster)


def removed_weights(weights):
    """How many weights keeping the four largest of each row removes."""
    return int(np.maximum(np.count_nonzero(weights, axis=1) - 4, 0).sum())


def expect_four_largest_kept(before, after):
    """after keeps at most four weights of each row of before, the largest, renormalised."""
    for row_before, row_after in zip(before, after):
        kept = np.flatnonzero(row_after)
        assert 0 < len(kept) <= 4
        assert np.allclose(row_after[kept], row_before[kept] / row_before[kept].sum(),
                           atol=1e-6)
        dropped = np.delete(row_before, kept)
        assert dropped.max(initial=0.0) <= row_before[kept].min() + 1e-7


def test_a_script_edits_a_gltf_file_with_numpy(tmp_path):
    source, result = tmp_path / 'strip.glb', tmp_path / 'edited.gltf'
    make_skinned_file(source)
    before = file_weights(source)
    script = tmp_path / 'move_first_influence.py'
    script.write_text(MOVE_FIRST_INFLUENCE)
    run_python(script, source, result, cwd=tmp_path)
    after = file_weights(result)
    assert np.all(after[:, 0] == 0.0)
    assert np.allclose(after[:, 1], before[:, 0] + before[:, 1], atol=1e-6)
    assert np.allclose(after[:, 2:], before[:, 2:], atol=1e-6)


def test_the_readme_example_keeps_the_four_largest_weights(tmp_path):
    folder = tmp_path / 'characters'
    folder.mkdir()
    names = ['arm.glb', 'leg.glb']
    for count, name in enumerate(names):
        make_skinned_file(folder / name, joints=10 + count)
    make_skinned_file(folder / 'other.gltf')
    before = {name: file_weights(folder / name) for name in names + ['other.gltf']}
    assert all(np.count_nonzero(w, axis=1).max() == 8 for w in before.values())
    script = tmp_path / 'keep_four_largest.py'
    script.write_text(readme_block('example: keep_four_largest.py'))
    output = run_python(script, folder, cwd=tmp_path)
    assert output.splitlines() == [
        f'{folder / name}: {removed_weights(before[name])} weights removed' for name in names]
    for name in names:
        expect_four_largest_kept(before[name], file_weights(folder / name))
    assert np.array_equal(file_weights(folder / 'other.gltf'), before['other.gltf'])


def test_the_readme_runs_the_example_over_many_files_with_parallel(tmp_path):
    folder = tmp_path / 'characters'
    folder.mkdir()
    names = [f'character{n}.glb' for n in range(3)]
    for name in names:
        make_skinned_file(folder / name)
    before = file_weights(folder / names[0])
    (tmp_path / 'keep_four_largest.py').write_text(
        readme_block('example: keep_four_largest.py'))
    (command,) = [line for line in readme_block('example: parallel').splitlines()
                  if line.startswith('parallel ')]
    done = subprocess.run(['bash', '-c', command], cwd=tmp_path, capture_output=True,
                          text=True, check=False)
    assert done.returncode == 0, done.stdout + done.stderr
    assert sorted(done.stdout.splitlines()) == [
        f'characters/{name}: {removed_weights(before)} weights removed' for name in names]
    for name in names:
        expect_four_largest_kept(before, file_weights(folder / name))
