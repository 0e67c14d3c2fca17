// three_fbx.mjs FOLDER: three.js plays every .fbx file that fbx_cases.py wrote. Joints, their parents, their positions
// and rotations at the keys, the bind pose, the body, the unit and the names must be as NAME.json says, and three.js
// must not complain.
import assert from 'node:assert';
import { AnimationMixer, LoopOnce, PropertyBinding, Quaternion, Vector3 } from 'three';
import { FBXLoader } from 'three/addons/loaders/FBXLoader.js';
import { bytesOf, distance, samples } from './samples.mjs';

// FBX counts time in these parts of a second; three.js keeps times in 32-bit numbers.
const partsOfSecond = 46186158000;
const timeInThree = (seconds) => Math.fround(Math.round(seconds * partsOfSecond) / partsOfSecond);
const rotationBound = 1e-4; // radians

const complaints = [];
for (const kind of ['warn', 'error', 'log', 'info'])
  console[kind] = (...words) => complaints.push(words.join(' '));
const print = (line) => process.stdout.write(line + '\n');

const nameInFile = (object) => object.userData.originalName ?? object.name;

// three.js removes [ ] . : / from names, so that two joints may get one name. Tracks find joints by names, so such
// files can only be played if each name is replaced by one of its own.
const sanitize = PropertyBinding.sanitizeNodeName;
const encode = (name) => 'n' + Buffer.from(name).toString('hex');
const modelsWithTrouble = (models) =>
  models.some((model) => {
    const names = [model.name, ...model.joints].map((name) => sanitize(name));
    return names.includes('') || new Set(names).size < names.length;
  });

function load(path, models) {
  PropertyBinding.sanitizeNodeName = modelsWithTrouble(models) ? encode : sanitize;
  return new FBXLoader().parse(bytesOf(path), '');
}

function groupOf(scene, model) {
  const found = [];
  scene.traverse((object) => object.isGroup && nameInFile(object) === model.name && found.push(object));
  assert.strictEqual(found.length, 1, `${found.length} groups are called ${model.name}`);
  return found[0];
}

function jointsOf(group, model) {
  const bones = new Map();
  group.traverse((object) => {
    if (!object.isBone) return;
    assert(!bones.has(nameInFile(object)), `there are two joints ${nameInFile(object)}`);
    bones.set(nameInFile(object), object);
  });
  assert.deepStrictEqual([...bones.keys()].sort(), [...model.joints].sort());
  for (const [index, name] of model.joints.entries()) {
    const parent = model.parents[index] < 0 ? model.name : model.joints[model.parents[index]];
    assert.strictEqual(nameInFile(bones.get(name).parent), parent, `the parent of ${name}`);
  }
  return model.joints.map((name) => bones.get(name));
}

function play(group, clip) {
  const mixer = new AnimationMixer(group);
  const action = mixer.clipAction(clip);
  action.setLoop(LoopOnce);
  action.clampWhenFinished = true;
  action.play();
  return mixer;
}

// Each vertex moves with one joint, as if it were fixed to it.
function looseness(body, bound) {
  body.skeleton.update();
  const position = body.geometry.getAttribute('position');
  const weight = body.geometry.getAttribute('skinWeight');
  let most = 0;
  for (let index = 0; index < position.count; ++index) {
    assert.strictEqual(weight.getX(index), 1);
    const joint = body.geometry.getAttribute('skinIndex').getX(index);
    const inJoint = new Vector3().fromBufferAttribute(position, index).applyMatrix4(body.bindMatrix);
    inJoint.applyMatrix4(body.skeleton.boneInverses[joint]);
    const expected = inJoint.applyMatrix4(body.skeleton.bones[joint].matrixWorld);
    const moved = body.applyBoneTransform(index, new Vector3().fromBufferAttribute(position, index));
    moved.applyMatrix4(body.matrixWorld);
    most = Math.max(most, distance(moved.toArray(), expected.toArray()));
  }
  assert(most <= bound, `the body is ${most} away from the joints`);
}

function checkBody(scene, joints, model) {
  const bodies = [];
  scene.traverse((object) => object.isSkinnedMesh && joints.includes(object.skeleton.bones[0]) && bodies.push(object));
  assert.strictEqual(bodies.length, 1, `${bodies.length} bodies`);
  const [{ skeleton }] = bodies;
  assert.deepStrictEqual(skeleton.bones.map(nameInFile).sort(), [...model.joints].sort());
  for (const [index, bone] of skeleton.bones.entries()) {
    const bind = new Vector3().setFromMatrixPosition(skeleton.boneInverses[index].clone().invert());
    if (!model.rest) continue;
    const rest = model.rest[model.joints.indexOf(nameInFile(bone))];
    const isThere = distance(bind.toArray(), rest) <= model.bound;
    assert(isThere, `${nameInFile(bone)} is bound at ${bind.toArray()}, not ${rest}`);
  }
  return bodies[0];
}

function checkClip(clip, model) {
  assert(clip, `no motion ${model.motion}`);
  const moves = clip.tracks.length > 0;
  if (moves) assert.strictEqual(clip.duration, timeInThree(model.seconds));
  for (const track of clip.tracks) {
    const count = track.times.length;
    if (count <= Math.min(2, model.keys - 1)) continue; // a joint that does not move
    // A turn of more than half a circle gets keys in between.
    const isRight = track.name.endsWith('.quaternion') ? count >= model.keys : count === model.keys;
    assert(isRight, `${track.name} has ${count} keys`);
  }
}

// Two opposite quaternions are the same rotation. The arc cosine of their product would be less precise.
function angleBetween(rotation, [x, y, z, w]) {
  const expected = new Quaternion(x, y, z, w);
  const sign = rotation.dot(expected) < 0 ? -1 : 1;
  const apart = rotation.toArray().map((value, index) => value - sign * expected.toArray()[index]);
  return 2 * Math.hypot(...apart);
}

// The greatest distance of a joint, as a part of the bound.
function compareMoment(joints, moment, model) {
  let most = 0;
  for (const [index, joint] of joints.entries()) {
    const position = new Vector3();
    const rotation = new Quaternion();
    joint.matrixWorld.decompose(position, rotation, new Vector3());
    const away = distance(position.toArray(), moment.positions[index]);
    const turned = angleBetween(rotation, moment.quaternions[index]);
    const where = `${model.joints[index]} at ${moment.time} s`;
    assert(away <= model.bound, `${where} is ${away / model.size} of the size away`);
    assert(turned <= rotationBound, `${where} is turned by ${turned}`);
    most = Math.max(most, away / model.bound);
  }
  return most;
}

function checkModel(scene, model, expected) {
  const group = groupOf(scene, model);
  const joints = jointsOf(group, model);
  const body = expected.mesh ? checkBody(scene, joints, model) : undefined;
  const clip = scene.animations.find((candidate) => candidate.name === model.motion);
  // A file in which nothing moves has no motions in three.js.
  const mixer = model.motion && scene.animations.length ? (checkClip(clip, model), play(group, clip)) : undefined;
  let most = 0;
  for (const moment of model.moments) {
    mixer?.setTime(timeInThree(moment.time));
    scene.updateMatrixWorld(true);
    most = Math.max(most, compareMoment(joints, moment, model));
  }
  if (body) looseness(body, model.bound);
  return most;
}

function checkFile(sample) {
  const expected = sample.models;
  complaints.length = 0;
  const scene = load(sample.path('.fbx'), expected.models);
  const unit = (expected.unit || 0.01) * 100;
  assert(Math.abs(scene.userData.unitScaleFactor / unit - 1) < 1e-9, `the unit is ${scene.userData.unitScaleFactor}`);
  const most = Math.max(0, ...expected.models.map((model) => checkModel(scene, model, expected)));
  assert.deepStrictEqual(complaints, []);
  return most;
}

const all = samples(process.argv[2]);
let failed = all.length === 0 ? 1 : 0;
let most = 0;
for (const sample of all) {
  try {
    most = Math.max(most, checkFile(sample));
  } catch (problem) {
    ++failed;
    const isOurs = problem instanceof assert.AssertionError;
    print(`${sample.name}: ${isOurs ? problem.message : problem.stack}`);
  }
}
print(`${all.length} files, ${failed} wrong; the greatest distance is ${most.toFixed(3)} of what is allowed`);
process.exit(failed ? 1 : 0);
