"""Skin weights as NumPy arrays: reading, exact round trips, one undo step per write,
normalising around locks, and every refusal."""
import numpy as np
import pytest

import vorel
from conftest import STRIP_WEIGHTS

ROWS = np.array([
    [0.1, 0.2, 0.3],
    [0.0, 0.0, 0.0],
    [0.3, 0.3, 0.4],
    [0.0, 1.0, 0.0],
    [0.5, 0.25, 0.25],
    [0.2, 0.0, 0.2],
])


def undo_name():
    return vorel.run('undoInfo -q -undoName')


def test_weights_are_rows_of_vertices_and_columns_of_influences(strip):
    weights = vorel.weights(strip)
    assert weights.dtype == np.float64
    assert weights.shape == (6, 3)
    assert weights.flags.c_contiguous and weights.flags.writeable
    assert np.array_equal(weights, STRIP_WEIGHTS)
    assert np.array_equal(vorel.weights('body', [4, 0]), STRIP_WEIGHTS[[4, 0]])
    assert np.array_equal(vorel.weights(strip, np.array([5, 5], dtype=np.uint8)),
                          STRIP_WEIGHTS[[5, 5]])
    assert vorel.weights(strip, []).shape == (0, 3)
    # The array is the caller's: changing it changes nothing in the scene.
    weights[:] = 0.0
    assert np.array_equal(vorel.weights(strip), STRIP_WEIGHTS)


def test_weights_go_back_exactly_and_one_undo_takes_them_away(strip):
    rows = np.random.default_rng(7).random((6, 3))
    vorel.set_weights(strip, rows, normalize=False)
    assert np.array_equal(vorel.weights(strip), rows)
    assert undo_name().startswith('setSkinWeights ')
    vorel.undo()
    assert np.array_equal(vorel.weights(strip), STRIP_WEIGHTS)
    assert undo_name() == ''
    vorel.redo()
    assert np.array_equal(vorel.weights(strip), rows)


def test_listed_vertices_take_their_rows(strip):
    vorel.set_weights(strip, [[0, 0, 1], [0.25, 0.75, 0]], vertices=[4, 0], normalize=False)
    expected = STRIP_WEIGHTS.copy()
    expected[4] = [0, 0, 1]
    expected[0] = [0.25, 0.75, 0]
    assert np.array_equal(vorel.weights(strip), expected)


def test_other_layouts_and_types_are_converted(strip):
    vorel.set_weights(strip, np.asfortranarray(ROWS), normalize=False)
    assert np.array_equal(vorel.weights(strip), ROWS)
    vorel.set_weights(strip, ROWS.astype(np.float32), normalize=False)
    assert np.array_equal(vorel.weights(strip), ROWS.astype(np.float32).astype(np.float64))
    vorel.set_weights(strip, ROWS[::-1, :].tolist(), normalize=False)
    assert np.array_equal(vorel.weights(strip), ROWS[::-1, :])


def test_normalizing_scales_each_row_around_locked_influences(strip):
    vorel.set_weights(strip, ROWS)
    weights = vorel.weights(strip)
    assert np.allclose(weights.sum(axis=1), 1.0, atol=1e-12)
    assert np.allclose(weights[0], [1 / 6, 2 / 6, 3 / 6], atol=1e-12)
    assert np.allclose(weights[1], [1 / 3, 1 / 3, 1 / 3], atol=1e-12)
    vorel.undo()
    vorel.run('setAttr c.lockInfluenceWeights 1')
    vorel.set_weights(strip, ROWS)
    weights = vorel.weights(strip)
    assert np.array_equal(weights[:, 2], STRIP_WEIGHTS[:, 2])
    assert np.allclose(weights[3], [0.0, 0.6, 0.4], atol=1e-12)
    assert np.allclose(weights[4], [0.8 * 2 / 3, 0.8 / 3, 0.2], atol=1e-12)


def test_locked_vertices_stay_and_say_so(strip):
    vorel.run('setAttr cluster1.lockVertex[2] 1')
    with pytest.warns(vorel.CommandWarning,
                      match='^setSkinWeights: 1 locked vertex was left as it was.$'):
        vorel.set_weights(strip, ROWS, normalize=False)
    expected = ROWS.copy()
    expected[2] = STRIP_WEIGHTS[2]
    assert np.array_equal(vorel.weights(strip), expected)


def with_value(row, column, value):
    rows = ROWS.copy()
    rows[row, column] = value
    return rows


@pytest.mark.parametrize('cluster, weights, vertices, message', [
    ('nowhere', ROWS, None, 'No object matches name: nowhere'),
    ('a', ROWS, None, 'setSkinWeights: a is not a skin cluster or a skinned mesh.'),
    ('cluster1', ROWS[:5], None, 'setSkinWeights: The array has 5 rows for 6 vertices.'),
    ('cluster1', ROWS[:, :2], None,
     'setSkinWeights: The array has 2 columns; cluster1 has 3 influences.'),
    ('cluster1', ROWS.ravel(), None,
     'weights must be a 2-D array (vertices x influences), not 1-D.'),
    ('cluster1', with_value(3, 1, np.nan), None,
     'setSkinWeights: Row 3, column 1 is not a number.'),
    ('cluster1', with_value(0, 2, -0.25), None,
     'setSkinWeights: Row 0, column 2 holds -0.25: weights lie from 0 to 1.'),
    ('cluster1', with_value(5, 0, 1.5), None,
     'setSkinWeights: Row 5, column 0 holds 1.5: weights lie from 0 to 1.'),
    ('cluster1', ROWS[:2], [0, 6], 'setSkinWeights: Vertex 6 is not a vertex of the geometry.'),
    ('cluster1', ROWS[:2], [0, -1], 'setSkinWeights: Vertex -1 is not a vertex of the geometry.'),
    ('cluster1', ROWS[:2], [3, 3], 'setSkinWeights: Vertex 3 is listed twice.'),
    ('cluster1', ROWS[:2], [0.0, 1.0], 'vertices must be whole numbers (vertex indices).'),
    ('cluster1', ROWS[:2], [[0, 1]], 'vertices must be a flat sequence of vertex indices.'),
])
def test_refused_writes_raise_value_error_and_change_nothing(strip, cluster, weights, vertices,
                                                             message):
    vorel.run('setAttr b.liw 1')
    with pytest.raises(ValueError) as raised:
        vorel.set_weights(cluster, weights, vertices)
    assert str(raised.value) == message
    assert np.array_equal(vorel.weights(strip), STRIP_WEIGHTS)
    assert undo_name() == 'setAttr b.liw 1'


def test_reading_refuses_vertices_that_are_not_the_meshs(strip):
    with pytest.raises(ValueError, match='^Vertex 6 is not a vertex of the geometry.$'):
        vorel.weights(strip, [1, 6])
    with pytest.raises(ValueError, match='^Vertex 4294967296 is not a vertex of the geometry.$'):
        vorel.weights(strip, [2 ** 32])
