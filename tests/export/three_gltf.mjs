// three_gltf.mjs FOLDER: three.js plays every .glb file. Every joint must be at the same position as
// in the host, and the mesh must move with the joints.
import assert from 'node:assert';
import { AnimationMixer, LoopOnce, Vector3 } from 'three';
import { GLTFLoader } from 'three/addons/loaders/GLTFLoader.js';
import { bytesOf, check, distance } from './samples.mjs';

const load = (path) => new GLTFLoader().parseAsync(bytesOf(path), '');

function worldOf(object) {
  return new Vector3().setFromMatrixPosition(object.matrixWorld).toArray();
}

function play(gltf, clip) {
  const mixer = new AnimationMixer(gltf.scene);
  const action = mixer.clipAction(clip);
  action.setLoop(LoopOnce);
  action.clampWhenFinished = true;
  action.play();
  return mixer;
}

// The greatest change of a vertex's distance from its joint. It must be 0, because each vertex moves
// with one joint.
function looseness(body) {
  body.skeleton.update();
  const position = body.geometry.getAttribute('position');
  const joint = body.geometry.getAttribute('skinIndex');
  const vertex = new Vector3();
  let most = 0;
  for (let index = 0; index < position.count; ++index) {
    const bone = joint.getX(index);
    const bind = body.skeleton.boneInverses[bone];
    const atRest = vertex.fromBufferAttribute(position, index).applyMatrix4(bind).length();
    vertex.fromBufferAttribute(position, index);
    body.applyBoneTransform(index, vertex);
    const now = distance(vertex.toArray(), worldOf(body.skeleton.bones[bone]));
    most = Math.max(most, Math.abs(now - atRest));
  }
  return most;
}

function namesAreKept(gltf, joints, names) {
  for (const [index, node] of joints.entries()) {
    const kept = node.userData.name ?? node.name;
    assert.strictEqual(kept, names[index]);
  }
}

await check(process.argv[2], async (sample) => {
  const gltf = await load(sample.path('.glb'));
  const { json } = gltf.parser;
  let most = 0;
  let clips = 0;
  for (const [index, model] of sample.models.entries()) {
    const numbers = json.skins[index].joints;
    const joints = await Promise.all(numbers.map((n) => gltf.parser.getDependency('node', n)));
    namesAreKept(gltf, joints, model.joints);
    const animated = model.secondsPerFrame > 0;
    // The motions of all models may be in one animation.
    const clip = gltf.animations[Math.min(clips, gltf.animations.length - 1)];
    const mixer = animated ? play(gltf, clip) : undefined;
    clips += animated ? 1 : 0;
    const bodies = [];
    gltf.scene.traverse((object) => object.isSkinnedMesh && bodies.push(object));
    assert.strictEqual(bodies.length, sample.name.endsWith('no-mesh') ? 0 : sample.models.length);
    for (const moment of model.moments) {
      mixer?.setTime(moment.time);
      gltf.scene.updateMatrixWorld(true);
      for (const [joint, node] of joints.entries())
        most = Math.max(most, distance(worldOf(node), moment.positions[joint]) / model.height);
      for (const body of bodies) most = Math.max(most, looseness(body) / model.height);
    }
  }
  const isMerged = clips > 1 && !sample.name.endsWith('apart');
  assert.strictEqual(gltf.animations.length, isMerged ? 1 : clips);
  return most;
});
