// The picture's page: a walk, read from glTF as any viewer reads it, at several moments at once.
import * as THREE from 'three';
import { GLTFLoader } from 'three/addons/loaders/GLTFLoader.js';
import { clone } from 'three/addons/utils/SkeletonUtils.js';

const background = 0xf4f6f9;
const moments = [0.14, 0.31, 0.48, 0.65, 0.82]; // shares of the take
const colours = [0xb9c7da, 0x93abc9, 0x6d8fb8, 0x4a75a8, 0x2b5c97];

function floor(scene, centre) {
  // Ends before the camera: lines that lead past it are not drawn everywhere.
  const grid = new THREE.GridHelper(12, 24, 0xb9c2ce, 0xccd4de);
  grid.position.set(centre.x + 1.5, 0, centre.z);
  const shade = new THREE.Mesh(
    new THREE.PlaneGeometry(30, 30),
    new THREE.ShadowMaterial({ opacity: 0.25 }),
  );
  shade.rotation.x = -Math.PI / 2;
  shade.position.set(centre.x, -0.001, centre.z);
  shade.receiveShadow = true;
  scene.add(grid, shade);
}

function light(scene, centre) {
  scene.add(new THREE.HemisphereLight(0xffffff, 0xb8bfca, 1.6));
  const sun = new THREE.DirectionalLight(0xffffff, 2.4);
  sun.position.set(centre.x - 3, 6, centre.z + 2);
  sun.target.position.copy(centre);
  sun.castShadow = true;
  sun.shadow.mapSize.set(4096, 4096);
  sun.shadow.radius = 4;
  Object.assign(sun.shadow.camera, { left: -6, right: 6, top: 6, bottom: -6, near: 0.5, far: 20 });
  scene.add(sun, sun.target);
}

// A copy of the figure as it stands at that share of the take.
function figureAt(gltf, share, colour) {
  const figure = clone(gltf.scene);
  figure.traverse((object) => {
    if (!object.isSkinnedMesh) return;
    object.frustumCulled = false;
    object.castShadow = true;
    object.material = object.material.clone();
    object.material.color.set(colour);
  });
  const mixer = new THREE.AnimationMixer(figure);
  const [clip] = gltf.animations;
  mixer.clipAction(clip).play();
  mixer.setTime(share * clip.duration);
  figure.updateMatrixWorld(true);
  return figure;
}

// `bytes` is a .glb in metres. Resolves when the picture stands.
window.draw = async (bytes, width, height) => {
  const gltf = await new GLTFLoader().parseAsync(new Uint8Array(bytes).buffer, '');
  const scene = new THREE.Scene();
  scene.background = new THREE.Color(background);
  scene.fog = new THREE.Fog(background, 7.5, 13.5);
  const box = new THREE.Box3();
  for (const [index, share] of moments.entries()) {
    const figure = figureAt(gltf, share, colours[index]);
    scene.add(figure);
    figure.traverse((object) => {
      if (object.isBone) box.expandByPoint(object.getWorldPosition(new THREE.Vector3()));
    });
  }
  const centre = box.getCenter(new THREE.Vector3());
  floor(scene, centre);
  light(scene, centre);

  // From the walker's right, so that the way leads from left to right.
  const camera = new THREE.PerspectiveCamera(26, width / height, 0.1, 100);
  const length = box.getSize(new THREE.Vector3()).z;
  const away = (length * 1.12) / (2 * Math.tan((camera.fov * Math.PI) / 360) * camera.aspect);
  camera.position.set(centre.x - away, centre.y + 0.75, centre.z + 0.5);
  camera.lookAt(centre.x, centre.y - 0.04, centre.z);

  const renderer = new THREE.WebGLRenderer({ antialias: true, preserveDrawingBuffer: true });
  renderer.setPixelRatio(2);
  renderer.setSize(width, height);
  renderer.shadowMap.enabled = true;
  document.body.style.margin = '0';
  document.body.append(renderer.domElement);
  renderer.render(scene, camera);
};
