// Where three.js has the joints of a BVH file, as one line of JSON.
// usage: node three_places.mjs FILE | --version
import { AnimationMixer, LoopOnce, REVISION, Vector3 } from 'three';
import { BVHLoader } from 'three/addons/loaders/BVHLoader.js';
import { readFileSync } from 'node:fs';

function places(path) {
  const { skeleton, clip } = new BVHLoader().parse(readFileSync(path, 'utf8'));
  const root = skeleton.bones[0];
  const mixer = new AnimationMixer(root);
  const action = mixer.clipAction(clip);
  action.setLoop(LoopOnce);
  action.clampWhenFinished = true;
  action.play();
  const times = clip.tracks.length > 0 ? [...clip.tracks[0].times] : [];
  const frames = times.map((time) => {
    mixer.setTime(time);
    root.updateMatrixWorld(true);
    return skeleton.bones.map((bone) => new Vector3().setFromMatrixPosition(bone.matrixWorld).toArray());
  });
  return { joints: skeleton.bones.map((bone) => bone.name), frames };
}

let answer;
if (process.argv[2] === '--version') {
  answer = { version: `r${REVISION}` };
} else {
  try {
    answer = places(process.argv[2]);
  } catch (problem) {
    answer = { error: String(problem.message) };
  }
}
// Numbers that are none become null.
console.log(`ANSWER ${JSON.stringify(answer)}`);
