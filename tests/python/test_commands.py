"""Running the command language from Python: results, errors, warnings, output, undo, the
scene's files, the plug-in and the cluster queries."""
import threading
import warnings

import pytest

import vorel


def test_results_become_python_values(strip):
    assert vorel.run('print "quiet"') is None
    assert vorel.run('getAttr cluster1.normalizeWeights') == 1
    assert isinstance(vorel.run('getAttr cluster1.normalizeWeights'), int)
    assert vorel.run('getAttr body.translateX') == 0.0
    assert isinstance(vorel.run('getAttr body.translateX'), float)
    assert vorel.run('rename body torso') == 'torso'
    assert vorel.run('ls -type joint') == ['a', 'b', 'c']
    assert vorel.run('skinPercent -q -v cluster1 torso.vtx[3]') == [0.6, 0.0, 0.4]
    assert vorel.run('select -r torso.vtx[1]; ls -sl') == ['bodyShape.vtx[1]']


def test_a_failing_statement_raises_the_hosts_error_and_stops_the_text(fresh_scene):
    with pytest.raises(vorel.CommandError) as raised:
        vorel.run('polyCube -n first; nothere; polyCube -n second')
    assert str(raised.value) == 'Cannot find procedure "nothere".'
    assert isinstance(raised.value, RuntimeError)
    assert vorel.run('ls -type transform') == ['first']
    with pytest.raises(vorel.CommandError, match='^No object matches name: nowhere$'):
        vorel.run('select -r nowhere')
    with pytest.raises(vorel.CommandError, match='^polyCube: Invalid flag: -bogus$'):
        vorel.run('polyCube -bogus 1')


def test_warnings_go_through_the_warnings_module(fresh_scene):
    with pytest.warns(vorel.CommandWarning) as caught:
        vorel.undo()
        vorel.redo()
    assert [str(w.message) for w in caught] == [
        'There are no more commands to undo.', 'There are no more commands to redo.']
    assert caught[0].filename == __file__
    with warnings.catch_warnings():
        warnings.simplefilter('error', vorel.CommandWarning)
        with pytest.raises(vorel.CommandWarning):
            vorel.run('polyCube -n box; undo; undo')
    # The warning came after the text had run.
    assert vorel.run('ls -type transform') == []


def test_information_and_print_go_to_stdout(fresh_scene, capsys):
    vorel.run('print "hello" 3; print "again"')
    assert capsys.readouterr().out == 'hello 3\nagain\n'


def test_undo_and_redo_take_whole_statements(fresh_scene):
    vorel.run('polyCube -n box; polyPlane -n ground')
    vorel.undo()
    assert vorel.run('ls -type transform') == ['box']
    vorel.undo()
    assert vorel.run('ls -type transform') == []
    vorel.redo()
    assert vorel.run('ls -type transform') == ['box']


def test_the_vorel_plug_in_loads_only_when_asked(fresh_scene):
    assert not vorel.run('pluginInfo -q -l')
    with pytest.raises(vorel.CommandError, match='vorelCmd'):
        vorel.run('vorelCmd')
    vorel.run('loadPlugin vorel')
    try:
        assert vorel.run('pluginInfo -q -l') == ['vorel']
    finally:
        vorel.run('unloadPlugin vorel')


def test_new_open_and_save_keep_unsaved_work(fresh_scene, tmp_path):
    with pytest.raises(vorel.CommandError, match='^file: The scene has no name to save under'):
        vorel.save()
    vorel.run('polyCube -n box')
    with pytest.raises(vorel.CommandError, match='The scene has unsaved changes.'):
        vorel.new()
    path = tmp_path / 'box "one".vscene'
    vorel.save(path)
    assert vorel.run('file -q -sceneName') == str(path)
    vorel.new()
    vorel.open(str(path))
    assert vorel.run('ls -type transform') == ['box']
    vorel.run('rename box crate')
    with pytest.raises(vorel.CommandError, match='files of this format can only be read'):
        vorel.save(tmp_path / 'box.fbx')
    assert vorel.run('file -q -sceneName') == str(path)
    vorel.save()
    with pytest.raises(vorel.CommandError, match='The scene has unsaved changes.'):
        vorel.run('polyPlane')
        vorel.open(str(path))
    vorel.open(path, force=True)
    assert vorel.run('ls -type transform') == ['crate']
    with pytest.raises(vorel.CommandError, match='missing.glb'):
        vorel.open(str(tmp_path / 'missing.glb'), force=True)
    assert vorel.run('ls -type transform') == ['crate']


def test_clusters_influences_and_their_mesh(strip):
    assert vorel.skin_clusters() == ['cluster1']
    assert vorel.influences('cluster1') == ['a', 'b', 'c']
    assert vorel.influences('body') == ['a', 'b', 'c']
    assert vorel.mesh_of('cluster1') == 'bodyShape'
    vorel.run('select -cl; polyPlane -n body2; skinCluster -n other b c body2')
    assert vorel.skin_clusters() == ['cluster1', 'other']
    assert vorel.influences('other') == ['b', 'c']
    for query in (vorel.influences, vorel.mesh_of, vorel.weights):
        with pytest.raises(ValueError, match='^No object matches name: nowhere$'):
            query('nowhere')
        with pytest.raises(ValueError, match='^a is not a skin cluster or a skinned mesh.$'):
            query('a')


def test_only_the_importing_thread_may_use_the_host(fresh_scene):
    raised = []

    def call():
        try:
            vorel.run('polyCube')
        except RuntimeError as error:
            raised.append(str(error))

    thread = threading.Thread(target=call)
    thread.start()
    thread.join()
    assert raised == ['vorel runs on the thread that imported it; call it from that thread.']
    assert vorel.run('ls -type transform') == []
