"""Fixtures shared by the tests of the vorel module: a fresh scene, a small skinned strip
with known weights, and skinned glTF files made with the command language."""
import numpy as np
import pytest

import vorel

# The strip's six vertices (0 1 2 / 3 4 5) on the joints a, b and c.
STRIP_WEIGHTS = np.array([
    [1.0, 0.0, 0.0],
    [0.5, 0.5, 0.0],
    [0.0, 1.0, 0.0],
    [0.6, 0.0, 0.4],
    [0.2, 0.6, 0.2],
    [0.0, 0.5, 0.5],
])


@pytest.fixture
def fresh_scene():
    """An empty scene with nothing to undo."""
    vorel.new(force=True)


@pytest.fixture
def strip(fresh_scene):
    """The mesh body bound to a (-1, 0, 0), b (origin) and c (1, 0, 0) as cluster1, with
    STRIP_WEIGHTS, and nothing to undo. Gives the cluster's name."""
    vorel.run('joint -n a -p -1 0 0; select -cl; joint -n b; select -cl;'
              'joint -n c -p 1 0 0; select -cl;'
              'polyPlane -n body -w 2 -h 1 -sx 2 -sy 1;'
              'skinCluster -n cluster1 a b c body; select -cl')
    vorel.set_weights('cluster1', STRIP_WEIGHTS, normalize=False)
    vorel.run('flushUndo')
    return 'cluster1'


def make_skinned_file(path, joints=12, weights_per_vertex=8, subdivisions=9):
    """Write a plane bound to a chain of joints, each vertex weighted to several of them, to
    path (any format the host writes), and leave the scene empty."""
    vorel.new(force=True)
    commands = ['select -cl']
    for j in range(joints):
        commands.append(f'joint -n bone{j + 1} -p {j * 0.2 - 1.1:.2f} 0 0')
    commands.append(f'select -cl; polyPlane -n skin -w 2 -h 2 -sx {subdivisions} '
                    f'-sy {subdivisions}')
    bones = ' '.join(f'bone{j + 1}' for j in range(joints))
    commands.append(f'skinCluster -n skinning -mi {weights_per_vertex} {bones} skin')
    vorel.run(';'.join(commands))
    vorel.save(str(path))
    vorel.new(force=True)
