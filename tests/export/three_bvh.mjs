// three_bvh.mjs FOLDER: three.js reads the .bvh files of the walks, and every joint must be at the
// same position as in the host. The other samples are left out, because three.js reads only one
// section and adds positions to offsets.
import { AnimationMixer, LoopOnce, Vector3 } from 'three';
import { BVHLoader } from 'three/addons/loaders/BVHLoader.js';
import { readFileSync } from 'node:fs';
import { check, distance } from './samples.mjs';

await check(process.argv[2], (sample) => {
  if (!sample.name.startsWith('walk')) return undefined;
  const { skeleton, clip } = new BVHLoader().parse(readFileSync(sample.path('.bvh'), 'utf8'));
  const root = skeleton.bones[0];
  const mixer = new AnimationMixer(root);
  const action = mixer.clipAction(clip);
  action.setLoop(LoopOnce);
  action.clampWhenFinished = true;
  action.play();
  const [model] = sample.models;
  let most = 0;
  for (const moment of model.moments) {
    mixer.setTime(moment.time);
    root.updateMatrixWorld(true);
    for (const [joint, bone] of skeleton.bones.entries()) {
      const position = new Vector3().setFromMatrixPosition(bone.matrixWorld).toArray();
      most = Math.max(most, distance(position, moment.positions[joint]) / model.height);
    }
  }
  return skeleton.bones.length === model.joints.length ? most : NaN;
});
