"""Whole-cluster weight arrays through the vorel module.

weights() and set_weights() of every vertex of a 100,000-vertex, 64-influence cluster with
8 weights per vertex; the targets are under 30 ms and under 100 ms. set_weights() is timed
whole: the array staged, checked and written by the host command, and recorded for undo.

    PYTHONPATH=build/python /usr/bin/python3 bench/python/weight_arrays.py
"""
import statistics
import time

import numpy as np

import vorel

JOINTS = 64
WEIGHTS_PER_VERTEX = 8
# 400 x 250 vertices.
SUBDIVISIONS = (399, 249)


def build_cluster():
    """A plane of 100,000 vertices bound to a chain of 64 joints; gives the cluster."""
    vorel.new(force=True)
    commands = ['select -cl']
    for j in range(JOINTS):
        commands.append(f'joint -n bone{j + 1} -p {-20 + 40 * j / (JOINTS - 1):.4f} 0 0')
    commands.append(f'select -cl; polyPlane -n grid -w 40 -h 25 '
                    f'-sx {SUBDIVISIONS[0]} -sy {SUBDIVISIONS[1]}')
    bones = ' '.join(f'bone{j + 1}' for j in range(JOINTS))
    commands.append(f'skinCluster -n cluster1 -mi {WEIGHTS_PER_VERTEX} {bones} grid')
    commands.append('flushUndo')
    vorel.run(';'.join(commands))
    return 'cluster1'


def milliseconds(action, runs, between=None):
    """The median and fastest elapsed time of action over runs, and its median processor
    time (which other programs on a busy machine do not add to), in milliseconds; between
    runs, untimed."""
    elapsed, processor = [], []
    for _ in range(runs):
        start, start_processor = time.perf_counter(), time.process_time()
        action()
        elapsed.append((time.perf_counter() - start) * 1000.0)
        processor.append((time.process_time() - start_processor) * 1000.0)
        if between:
            between()
    return statistics.median(elapsed), min(elapsed), statistics.median(processor)


def report(name, figures, target):
    """One line per measurement, with the target."""
    median, fastest, processor = figures
    print(f'{name:<30} median {median:6.1f} ms  fastest {fastest:6.1f} ms  '
          f'processor {processor:6.1f} ms  target < {target} ms')


def main():
    """Build the cluster, then time reading and writing all of it."""
    cluster = build_cluster()
    weights = vorel.weights(cluster)
    vertices, influences = weights.shape
    print(f'{vertices} vertices, {influences} influences, '
          f'{np.count_nonzero(weights) / vertices:.0f} weights per vertex')
    report('weights()', milliseconds(lambda: vorel.weights(cluster), 30), 30)

    # Two different arrays in turn, so that every write changes every vertex.
    halved = weights.copy()
    halved[:, ::2] *= 0.5
    arrays = [halved, weights]

    def write(normalize):
        arrays.reverse()
        vorel.set_weights(cluster, arrays[0], normalize=normalize)

    def forget():
        vorel.run('flushUndo')

    report('set_weights(normalize=False)',
           milliseconds(lambda: write(False), 15, between=forget), 100)
    report('set_weights(normalize=True)',
           milliseconds(lambda: write(True), 15, between=forget), 100)
    write(False)
    report('undo() of set_weights()',
           milliseconds(vorel.undo, 15, between=lambda: write(False)), 100)


if __name__ == '__main__':
    main()
